// Output that carries bytes as they are, a line feed without a carriage return among them, for a
// program that is linked with this file.
#include <fcntl.h>
#include <io.h>
#include <stdio.h>

namespace {

const int earlier_modes[] = {_setmode(_fileno(stdout), _O_BINARY),
                             _setmode(_fileno(stderr), _O_BINARY)};

}  // namespace
