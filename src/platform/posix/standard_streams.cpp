// Takes the numbers of the standard streams that the caller of a program linked with this file has
// closed. Opened the wrong way round, they fail to be read and written as closed ones do, and no
// data file is mistaken for one of them.
#include <fcntl.h>
#include <unistd.h>

namespace {

[[maybe_unused]] const bool taken = [] {
    constexpr int kAccess[] = {O_WRONLY, O_RDONLY, O_RDONLY};
    for (int stream = 0; stream < 3; ++stream) {
        // The lowest free number is the one that is given out.
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", kAccess[stream]) != stream)
            return false;
    }
    return true;
}();

}  // namespace
