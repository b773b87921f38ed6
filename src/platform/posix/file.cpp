#include "platform/file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

#include "platform/path.h"

namespace hundredweight::platform {
namespace {

constexpr std::size_t kPathSize = 512;  // Longer than any path that the library builds.

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

/// The directory that a path's last component lies in.
Directory OpenDirectoryOf(std::string_view path) {
    const std::size_t length = path.rfind('/') + 1;
    char name[kPathSize] = ".";
    if (length > 0 && length < sizeof name) {
        path.copy(name, length);
        name[length] = '\0';
    }
    return Directory(opendir(name));
}

/// Opens a name of a directory. O_NONBLOCK keeps a pipe with a data file's name from stopping the
/// host; it changes nothing for regular files.
int OpenExactly(int directory, const char* name, int access) {
    int descriptor = -1;
    do {
        descriptor = openat(directory, name, access | O_CLOEXEC | O_NONBLOCK);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

std::string_view LastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

enum class Kind { kAnything, kRegularFile };

bool IsOfKind(DIR* directory, const char* name, Kind kind) {
    struct stat status = {};
    return kind == Kind::kAnything ||
           (fstatat(dirfd(directory), name, &status, 0) == 0 && S_ISREG(status.st_mode));
}

/// A name in a directory, empty for none.
struct EntryName {
    char text[sizeof(dirent::d_name)] = "";

    bool empty() const { return text[0] == '\0'; }
};

/// The name that differs from the wanted one in case alone, the first in byte order when there are
/// several.
EntryName FindIgnoringCase(DIR* directory, std::string_view wanted, Kind kind) {
    EntryName found;
    if (directory == nullptr) return found;
    while (const dirent* entry = readdir(directory)) {
        if (!EqualIgnoringCase(entry->d_name, wanted)) continue;
        if (!found.empty() && std::strcmp(found.text, entry->d_name) < 0) continue;
        if (IsOfKind(directory, entry->d_name, kind)) {
            std::memcpy(found.text, entry->d_name, std::strlen(entry->d_name) + 1);
        }
    }
    return found;
}

int OpenIgnoringCase(const char* path, int access) {
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

int16_t OpenRegularFile(const char* path, int access, int64_t* length) {
    const int descriptor = OpenPath(path, access);
    if (descriptor < 0) return -1;
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return -1;
    }
    *length = status.st_size;
    return ToHandle(descriptor);
}

bool WriteBytes(int descriptor, const void* content, std::size_t size) {
    const auto* const bytes = static_cast<const char*>(content);
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = write(descriptor, bytes + done, size - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

bool ExistsExactly(const char* path) {
    struct stat status = {};
    return lstat(path, &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

/// Gives a file the access rights of the one that it replaces.
void CopyRights(const char* from, const char* to) {
    struct stat status = {};
    if (stat(from, &status) == 0) chmod(to, status.st_mode & 07777);
}

/// Creates a file of a name that nothing has yet.
int CreateAnew(const char* path) {
    return open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
}

bool CopyBytes(int from, int to, int64_t left) {
    char buffer[1 << 16];
    while (left > 0) {
        const std::size_t size = ReadBytes(from, buffer, sizeof buffer);
        if (size == 0 || !WriteBytes(to, buffer, size)) return false;
        left -= static_cast<int64_t>(size);
    }
    return true;
}

/// Ends the writing of a new file, which is on disk when this returns, or there is none.
WriteOutcome Finish(int descriptor, bool written, const char* path) {
    const bool on_disk = written && fsync(descriptor) == 0;
    if (close(descriptor) == 0 && on_disk) return WriteOutcome::kWritten;
    unlink(path);
    return WriteOutcome::kNotWritten;
}

}  // namespace

int16_t OpenForReading(const char* path, int64_t* length) {
    return OpenRegularFile(path, O_RDONLY, length);
}

int16_t OpenForUpdate(const char* path, int64_t* length) {
    return OpenRegularFile(path, O_RDWR, length);
}

bool FileExists(const char* path) {
    if (ExistsExactly(path)) return true;
    const Directory directory = OpenDirectoryOf(path);
    return !FindIgnoringCase(directory.get(), LastComponent(path), Kind::kAnything).empty();
}

std::FILE* OpenStreamForReading(const char* path) {
    int64_t length = 0;
    const int16_t handle = OpenForReading(path, &length);
    if (handle == -1) return nullptr;
    std::FILE* const stream = fdopen(handle, "rb");
    if (stream == nullptr) close(handle);
    return stream;
}

bool SeekTo(int descriptor, int64_t position) {
    return lseek(descriptor, position, SEEK_SET) == position;
}

std::size_t ReadBytes(int descriptor, void* buffer, std::size_t size) {
    auto* const bytes = static_cast<char*>(buffer);
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = read(descriptor, bytes + done, size - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

void CloseFile(int descriptor) {
    close(descriptor);
}

WriteOutcome WriteNewFile(const char* path, const void* content, std::size_t size) {
    const int descriptor = CreateAnew(path);
    if (descriptor < 0) return WriteOutcome::kNotCreated;
    return Finish(descriptor, WriteBytes(descriptor, content, size), path);
}

WriteOutcome CopyToNewFile(const char* from, const char* to) {
    int64_t length = 0;
    const int16_t source = OpenForReading(from, &length);
    if (source == -1) return WriteOutcome::kNotCreated;
    WriteOutcome outcome = WriteOutcome::kNotCreated;
    const int descriptor = CreateAnew(to);
    if (descriptor >= 0) outcome = Finish(descriptor, CopyBytes(source, descriptor, length), to);
    close(source);
    return outcome;
}

bool RenameOver(const char* from, const char* to) {
    const Directory directory = OpenDirectoryOf(to);
    // Where case does not tell, a file of the name in other letters is the one that is replaced.
    EntryName other_case;
    if (!ExistsExactly(to)) {
        other_case = FindIgnoringCase(directory.get(), LastComponent(to), Kind::kRegularFile);
    }
    CopyRights(to, from);
    if (rename(from, to) != 0) return false;
    if (!other_case.empty()) unlinkat(dirfd(directory.get()), other_case.text, 0);
    if (directory) fsync(dirfd(directory.get()));
    return true;
}

bool RenameUnlessExists(const char* from, const char* to) {
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) != 0) {
        // Some file systems know the one way, some the other.
        if (errno == EEXIST || link(from, to) != 0) return false;
        unlink(from);
    }
    if (const Directory directory = OpenDirectoryOf(to)) fsync(dirfd(directory.get()));
    return true;
}

void RemoveFile(const char* path) {
    unlink(path);
}

bool IsSeparator(char character) {
    return character == '/' || character == '\\';
}

bool IsSameName(std::string_view a, std::string_view b) {
    return EqualIgnoringCase(a, b);
}

}  // namespace hundredweight::platform
