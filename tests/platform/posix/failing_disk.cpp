// The test program is linked so that the library's file operations and allocations come here first.
#include "support/failing_disk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

#include "support/failing_system.h"

using namespace hundredweight;

namespace hundredweight {
const std::vector<Fault> kFaults = {Fault::kIoError,  Fault::kDiskFull, Fault::kAllFailFromThere,
                                    Fault::kFileEnds, Fault::kShort,    Fault::kInterrupted};
}

static void NoteRights(int descriptor) {
    struct stat status;
    if (FailingDisk::current != nullptr && fstat(descriptor, &status) == 0)
        FailingDisk::current->rights |= status.st_mode & 0777U;
}

static void NoteListing() {
    if (FailingDisk::current != nullptr) ++FailingDisk::current->directories_listed;
}

/// Reads what a file that breaks off lets be read, and counts it.
template <class Call>
static ssize_t Read(std::size_t size, Call call) {
    const ssize_t count = FailingDisk::Transfer(
        false, size, [&](std::size_t part) { return call(ReadableBytes(part)); });
    if (FailingDisk::current != nullptr && count > 0)
        FailingDisk::current->bytes_read += static_cast<std::size_t>(count);
    return count;
}

#define WRAP_ALL(before, result, failure, name, parameters, arguments)                    \
    result __real_##name parameters;                                                      \
    result __wrap_##name parameters {                                                     \
        before;                                                                           \
        return FailingDisk::Do<result>(failure, [&] { return __real_##name arguments; }); \
    }
#define WRAP(...) WRAP_ALL({}, int, -1, __VA_ARGS__)
#define WRAP_NAMING(...) WRAP_ALL(FailingDisk::NoteName(), int, -1, __VA_ARGS__)

extern "C" {
// A mode is passed on also where none came; it is read of files that are created alone.
WRAP(open64, (const char* path, int flags, mode_t mode), (path, flags, mode))
WRAP(openat64, (int at, const char* path, int flags, mode_t mode), (at, path, flags, mode))
WRAP_NAMING(link, (const char* from, const char* to), (from, to))
WRAP_NAMING(rename, (const char* from, const char* to), (from, to))
WRAP_NAMING(renameat2, (int at, const char* from, int to_at, const char* to, unsigned flags),
            (at, from, to_at, to, flags))
WRAP(unlink, (const char* path), (path))
WRAP(unlinkat, (int at, const char* path, int flags), (at, path, flags))
WRAP(fchmod, (int descriptor, mode_t mode), (descriptor, mode))
WRAP(fchown, (int descriptor, uid_t user, gid_t group), (descriptor, user, group))
WRAP_ALL(NoteListing(), DIR*, nullptr, opendir, (const char* path), (path))

int __real_flock(int descriptor, int how);
int __wrap_flock(int descriptor, int how) {
    errno = ENOLCK;
    return FailingDisk::Do(
        -1, [&] { return FailingDisk::knows_locks ? __real_flock(descriptor, how) : -1; });
}

int __real_close(int descriptor);
int __wrap_close(int descriptor) {
    const int result = __real_close(descriptor);
    return FailingDisk::Do(-1, [&] { return result; });
}

ssize_t __real_write(int descriptor, const void* content, std::size_t size);
ssize_t __wrap_write(int descriptor, const void* content, std::size_t size) {
    NoteRights(descriptor);
    return FailingDisk::Transfer(
        true, size, [&](std::size_t part) { return __real_write(descriptor, content, part); });
}

int __wrap_fsync(int) {  // Nothing is flushed in truth: the tests are quicker so.
    return FailingDisk::NoteFlush(FailingDisk::Do(-1, [] { return 0; }));
}

ssize_t __real_read(int descriptor, void* buffer, std::size_t size);
ssize_t __wrap_read(int descriptor, void* buffer, std::size_t size) {
    return Read(size, [&](std::size_t part) { return __real_read(descriptor, buffer, part); });
}

ssize_t __real_pread64(int descriptor, void* buffer, std::size_t size, off_t position);
ssize_t __wrap_pread64(int descriptor, void* buffer, std::size_t size, off_t position) {
    return Read(
        size, [&](std::size_t part) { return __real_pread64(descriptor, buffer, part, position); });
}

int __real_clock_gettime(clockid_t clock, timespec* time);
int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    const int result = __real_clock_gettime(clock, time);
    time->tv_sec += static_cast<time_t>(seconds_ahead);
    return result;
}

void* __real_calloc(std::size_t count, std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return AllocationFails() ? nullptr : __real_calloc(count, size);
}
}
