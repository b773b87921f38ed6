// Makes standard output and error of a program that is linked with this file binary, so that a line
// feed stays a line feed.
#include <fcntl.h>
#include <io.h>
#include <stdio.h>

namespace {

const int earlier_modes[] = {_setmode(_fileno(stdout), _O_BINARY),
                             _setmode(_fileno(stderr), _O_BINARY)};

}  // namespace
