#include "support/failing_disk.h"

#include <fcntl.h>

#include <cerrno>
#include <filesystem>

using namespace hundredweight;

bool FailingDisk::Strikes() {
    if (current == nullptr) return false;
    if (current->struck) return current->cut == Cut::kAllFailFromThere;
    return current->struck = current->to_strike > 0 && --current->to_strike == 0;
}

int FailingDisk::Fail() {
    if (current->cut == Cut::kProcessDies) _exit(kDied);
    errno = EIO;
    return -1;
}

ssize_t FailingDisk::CountRead(ssize_t size) {
    if (current != nullptr && size > 0) current->bytes_read += static_cast<std::size_t>(size);
    return size;
}

static FailingDisk* const& disk = FailingDisk::current;

static void NoteOpening(const std::string& directory, const char* path, int flags) {
    if (disk != nullptr && (flags & O_CREAT) != 0)
        disk->created.push_back(std::filesystem::read_symlink("/proc/self/" + directory) / path);
}

static void NoteName() {
    if (disk != nullptr) disk->named_unflushed |= !disk->flushed;
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
WRAP(link, (const char* from, const char* to), (from, to), NoteName())
WRAP(rename, (const char* from, const char* to), (from, to), NoteName())
WRAP(renameat2, (int at, const char* from, int to_at, const char* to, unsigned flags),
     (at, from, to_at, to, flags), NoteName())
WRAP(unlink, (const char* path), (path), {})
WRAP(unlinkat, (int at, const char* path, int flags), (at, path, flags), {})

int __real_close(int descriptor);
int __wrap_close(int descriptor) {
    const int result = __real_close(descriptor);
    return FailingDisk::Strikes() ? FailingDisk::Fail() : result;
}

ssize_t __real_write(int descriptor, const void* content, std::size_t size);
ssize_t __wrap_write(int descriptor, const void* content, std::size_t size) {
    if (disk != nullptr) disk->flushed = false;
    if (!FailingDisk::Strikes()) return __real_write(descriptor, content, size);
    disk->content_struck = true;
    return __real_write(descriptor, content, size / 2) < 0 ? -1 : FailingDisk::Fail();
}

int __wrap_fsync(int) {  // Nothing is flushed in truth: the tests are quicker so.
    const bool struck = FailingDisk::Strikes();
    if (disk != nullptr) disk->content_struck |= struck && !disk->flushed;
    if (disk != nullptr) disk->flushed |= !struck;
    return struck ? FailingDisk::Fail() : 0;
}
}
