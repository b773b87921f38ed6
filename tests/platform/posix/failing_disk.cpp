// The test program is linked so that the library's file operations and allocations come here first.
#include "support/failing_disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/failing_system.h"

using namespace hundredweight;

static void NoteOpening(const std::string& directory, const char* path, int flags) {
    FailingDisk* const disk = FailingDisk::current;
    if (disk != nullptr && (flags & O_CREAT) != 0)
        disk->created.push_back(std::filesystem::read_symlink("/proc/self/" + directory) / path);
}

#define WRAP(name, parameters, arguments, note)                                        \
    int __real_##name parameters;                                                      \
    int __wrap_##name parameters {                                                     \
        note;                                                                          \
        return FailingDisk::Strikes() ? FailingDisk::Fail() : __real_##name arguments; \
    }

extern "C" {
// A mode is passed on also where none came; it is read of files that are created alone.
WRAP(open64, (const char* path, int flags, mode_t mode), (path, flags, mode),
     NoteOpening("cwd", path, flags))
WRAP(openat64, (int at, const char* path, int flags, mode_t mode), (at, path, flags, mode),
     NoteOpening(at < 0 ? "cwd" : "fd/" + std::to_string(at), path, flags))
WRAP(link, (const char* from, const char* to), (from, to), FailingDisk::NoteName())
WRAP(rename, (const char* from, const char* to), (from, to), FailingDisk::NoteName())
WRAP(renameat2, (int at, const char* from, int to_at, const char* to, unsigned flags),
     (at, from, to_at, to, flags), FailingDisk::NoteName())
WRAP(unlink, (const char* path), (path), {})
WRAP(unlinkat, (int at, const char* path, int flags), (at, path, flags), {})

int __real_close(int descriptor);
int __wrap_close(int descriptor) {
    const int result = __real_close(descriptor);
    return FailingDisk::Strikes() ? FailingDisk::Fail() : result;
}

ssize_t __real_write(int descriptor, const void* content, std::size_t size);
ssize_t __wrap_write(int descriptor, const void* content, std::size_t size) {
    if (!FailingDisk::ContentStrikes()) return __real_write(descriptor, content, size);
    return __real_write(descriptor, content, size / 2) < 0 ? -1 : FailingDisk::Fail();
}

int __wrap_fsync(int) {  // Nothing is flushed in truth: the tests are quicker so.
    return FailingDisk::FlushStrikes() ? FailingDisk::Fail() : 0;
}

ssize_t __real_read(int descriptor, void* buffer, std::size_t size);
ssize_t __wrap_read(int descriptor, void* buffer, std::size_t size) {
    if (FailingDisk::Strikes()) return FailingDisk::Fail();
    struct stat status = {};
    if (hollow_file != 0 && fstat(descriptor, &status) == 0 && status.st_ino == hollow_file)
        size = 0;
    const ssize_t count = __real_read(descriptor, buffer, ReadableBytes(size));
    FailingDisk::CountRead(count);
    return count;
}

void* __real_calloc(std::size_t count, std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return AllocationFails() ? nullptr : __real_calloc(count, size);
}
}
