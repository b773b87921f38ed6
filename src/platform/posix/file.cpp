#include "platform/file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <limits>
#include <string_view>

#include "platform/directory_listing.h"
#include "platform/posix/directory.h"
#include "platform/posix/status.h"

namespace hundredweight::platform {
namespace {

/// Opens a name of a directory. O_NONBLOCK keeps a pipe with a data file's name from stopping the
/// host; it changes nothing for regular files.
int OpenExactly(int directory, const char* name, int access) {
    return Uninterrupted([&] { return openat(directory, name, access | O_CLOEXEC | O_NONBLOCK); });
}

int OpenIgnoringCase(const char* path, int access) {
    DirectoryListing* const listing = DirectoryListing::Current();
    if (listing != nullptr && listing->List(path)) {
        const SystemPath listed = listing->Find(path);
        return listed.empty() ? -1 : OpenExactly(AT_FDCWD, listed.c_str(), access);
    }
    const Directory directory = OpenDirectoryOf(path);
    const EntryName found =
        FindIgnoringCase(directory.get(), LastComponent(path), Kind::kRegularFile);
    if (found.empty()) return -1;
    return OpenExactly(dirfd(directory.get()), found.text, access);
}

int OpenPath(const char* path, int access) {
    const int descriptor = OpenExactly(AT_FDCWD, path, access);
    return descriptor < 0 && errno == ENOENT ? OpenIgnoringCase(path, access) : descriptor;
}

/// A descriptor that the record can hold: 0 means not open there, and handles are 16 bits wide.
int16_t ToHandle(int descriptor) {
    if (descriptor == 0) {
        descriptor = fcntl(0, F_DUPFD_CLOEXEC, 1);
        close(0);
    }
    if (descriptor <= std::numeric_limits<int16_t>::max()) return static_cast<int16_t>(descriptor);
    close(descriptor);
    return -1;
}

int16_t OpenRegularFile(const char* path, int access, FileState* state) {
    const int descriptor = OpenPath(path, access);
    if (descriptor < 0) return -1;
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return -1;
    }
    *state = StateIn(status);
    return ToHandle(descriptor);
}

/// Reads on from what is done until a size is reached. Result: bytes read.
template <class ReadSome>
std::size_t ReadAll(std::size_t size, ReadSome read_some) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = Uninterrupted([&] { return read_some(done); });
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

}  // namespace

int16_t OpenForReading(const char* path, FileState* state) {
    return OpenRegularFile(path, O_RDONLY, state);
}

int16_t OpenForUpdate(const char* path, FileState* state) {
    return OpenRegularFile(path, O_RDWR, state);
}

bool FileExists(const char* path) {
    if (ExistsExactly(path)) return true;
    const Directory directory = OpenDirectoryOf(path);
    return !FindIgnoringCase(directory.get(), LastComponent(path), Kind::kAnything).empty();
}

bool IsSameFile(const char* a, const char* b) {
    struct stat first = {};
    struct stat second = {};
    return stat(a, &first) == 0 && stat(b, &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

std::FILE* OpenStreamForReading(const char* path) {
    FileState state;
    const int16_t handle = OpenForReading(path, &state);
    if (handle == -1) return nullptr;
    std::FILE* const stream = fdopen(handle, "rb");
    if (stream == nullptr) close(handle);
    return stream;
}

bool SeekTo(int descriptor, int64_t position) {
    return lseek(descriptor, position, SEEK_SET) == position;
}

std::size_t ReadBytes(int descriptor, void* buffer, std::size_t size) {
    return ReadAll(size, [&](std::size_t done) {
        return read(descriptor, static_cast<char*>(buffer) + done, size - done);
    });
}

std::size_t ReadBytesAt(int descriptor, int64_t position, void* buffer, std::size_t size) {
    return ReadAll(size, [&](std::size_t done) {
        return pread(descriptor, static_cast<char*>(buffer) + done, size - done,
                     position + static_cast<int64_t>(done));
    });
}

void CloseFile(int descriptor) {
    close(descriptor);
}

uint32_t ProcessNumber() {
    return static_cast<uint32_t>(getpid());
}

uint32_t MachineNumber() {
    char name[256] = "";
    gethostname(name, sizeof name - 1);
    return static_cast<uint32_t>(std::hash<std::string_view>()(name));
}

bool ProcessRuns(uint32_t process) {
    return process != 0 && (kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM);
}

std::string_view DirectoryOf(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1);
}

bool IsSeparator(char character) {
    return character == '/' || character == '\\';
}

bool IsSameName(std::string_view a, std::string_view b) {
    return EqualIgnoringCase(a, b);
}

}  // namespace hundredweight::platform
