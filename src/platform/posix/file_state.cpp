#include "platform/file_state.h"

#include <time.h>

#include "platform/posix/status.h"

namespace hundredweight::platform {
namespace {

constexpr int64_t kSecond = 1000000000;  // In nanoseconds.
constexpr int64_t kCoarsestUnit = 2 * kSecond;

int64_t Nanoseconds(const timespec& time) {
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

bool HasSettled(const FileState& state) {
    // Files get their times from this clock, which is a tick behind the exact one.
    timespec now = {};
    return state.changed != 0 && clock_gettime(CLOCK_REALTIME_COARSE, &now) == 0 &&
           Nanoseconds(now) - state.changed >= kCoarsestUnit;
}

}  // namespace hundredweight::platform
