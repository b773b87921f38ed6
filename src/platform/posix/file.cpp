#include "platform/file.h"

#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <memory>
#include <string>

namespace hundredweight::platform {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

/// The path of a file in the same directory whose name differs from the path's in case alone; the
/// first in byte order when there are several, empty when there is none.
std::string FindIgnoringCase(const std::string& path) {
    const std::size_t name_at = path.rfind('/') + 1;
    const std::string directory_path = path.substr(0, name_at);
    const std::string name = path.substr(name_at);
    const std::unique_ptr<DIR, CloseDirectory> directory(
        opendir(directory_path.empty() ? "." : directory_path.c_str()));
    if (!directory) return {};
    std::string found;
    while (const dirent* entry = readdir(directory.get())) {
        if (strcasecmp(entry->d_name, name.c_str()) != 0) continue;
        if (found.empty() || found > entry->d_name) found = entry->d_name;
    }
    return found.empty() ? found : directory_path + found;
}

/// O_NONBLOCK keeps a pipe with a data file's name from stopping the host; it changes nothing for
/// regular files.
int OpenReadOnly(const char* path) {
    int descriptor = -1;
    do {
        descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
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

/// Makes a rename in a file's directory last.
void SyncDirectoryOf(const std::string& path) {
    const std::string directory = path.substr(0, path.rfind('/') + 1);
    const int descriptor =
        open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

int16_t OpenForReading(const char* path, int64_t* length) {
    int descriptor = OpenReadOnly(path);
    if (descriptor < 0 && errno == ENOENT) {
        const std::string found = FindIgnoringCase(path);
        if (!found.empty()) descriptor = OpenReadOnly(found.c_str());
    }
    if (descriptor < 0) return -1;
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return -1;
    }
    *length = status.st_size;
    return ToHandle(descriptor);
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

ReplaceOutcome ReplaceFile(const char* path, const void* content, std::size_t size) {
    const std::string temporary = std::string(path) + ".tmp";
    const int descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0) return ReplaceOutcome::kNotCreated;
    const bool on_disk = WriteBytes(descriptor, content, size) && fsync(descriptor) == 0;
    const bool written = close(descriptor) == 0 && on_disk;
    if (!written || rename(temporary.c_str(), path) != 0) {
        unlink(temporary.c_str());
        return written ? ReplaceOutcome::kNotCreated : ReplaceOutcome::kNotWritten;
    }
    SyncDirectoryOf(path);
    return ReplaceOutcome::kReplaced;
}

}  // namespace hundredweight::platform
