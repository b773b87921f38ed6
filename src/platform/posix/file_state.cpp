#include "platform/file_state.h"

#include <fcntl.h>
#include <sys/sysmacros.h>
#include <time.h>

#include "platform/posix/status.h"

namespace hundredweight::platform {
namespace {

constexpr int64_t kSecond = 1000000000;  // In nanoseconds.
constexpr int64_t kCoarsestUnit = 2 * kSecond;

template <class Time>
int64_t Nanoseconds(const Time& time) {
    return int64_t{time.tv_sec} * kSecond + time.tv_nsec;
}

}  // namespace

FileState StateIn(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
            Nanoseconds(status.st_ctim)};
}

bool StateOf(int descriptor, FileState* state) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return false;
    *state = StateIn(status);
    return true;
}

bool StateOf(const char* path, FileState* state) {
    constexpr unsigned kAsked = STATX_INO | STATX_SIZE | STATX_MTIME | STATX_CTIME;
    struct statx status = {};
    // Like an open, and unlike stat, this asks the server of a file whose state is cached.
    if (statx(AT_FDCWD, path, AT_STATX_FORCE_SYNC, kAsked, &status) != 0) return false;
    if ((status.stx_mask & kAsked) != kAsked) return false;
    *state = {makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino,
              static_cast<int64_t>(status.stx_size), Nanoseconds(status.stx_mtime),
              Nanoseconds(status.stx_ctime)};
    return true;
}

bool HasSettled(const FileState& state) {
    // Files get their times from this clock, which is a tick behind the exact one.
    timespec now = {};
    return state.changed != 0 && clock_gettime(CLOCK_REALTIME_COARSE, &now) == 0 &&
           Nanoseconds(now) - state.changed >= kCoarsestUnit;
}

}  // namespace hundredweight::platform
