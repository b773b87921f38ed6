#include "platform/posix/directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include "platform/file.h"

namespace hundredweight::platform {
namespace {

bool IsOfKind(DIR* directory, const char* name, Kind kind) {
    struct stat status = {};
    return kind == Kind::kAnything ||
           (fstatat(dirfd(directory), name, &status, 0) == 0 && S_ISREG(status.st_mode));
}

}  // namespace

bool Close(int descriptor) {
    return close(descriptor) == 0 || errno == EINTR;
}

std::string_view LastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

SystemPath DirectoryName(std::string_view path) {
    const std::string_view directories = DirectoryOf(path);
    return SystemPath(directories.empty() ? "." : directories);
}

Directory OpenDirectoryOf(std::string_view path) {
    const SystemPath name = DirectoryName(path);
    Directory directory;
    do {
        directory.reset(opendir(name.c_str()));
    } while (!directory && errno == EINTR);
    return directory;
}

bool ExistsExactly(const char* path) {
    struct stat status = {};
    return lstat(path, &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

EntryName FindIgnoringCase(DIR* directory, std::string_view wanted, Kind kind) {
    EntryName found;
    if (directory == nullptr) return found;
    while (const dirent* entry = readdir(directory)) {
        if (wanted.size() >= sizeof found.text || !EqualIgnoringCase(entry->d_name, wanted))
            continue;
        if (!found.empty() && std::strcmp(found.text, entry->d_name) < 0) continue;
        if (IsOfKind(directory, entry->d_name, kind)) {
            std::memcpy(found.text, entry->d_name, std::strlen(entry->d_name) + 1);
        }
    }
    return found;
}

bool FollowLinks(SystemPath& path) {
    constexpr int kMostLinks = 40;  // As many as the system itself follows.
    for (int links = 0; links <= kMostLinks; ++links) {
        char target[kLongestSystemPath];
        const ssize_t size = readlink(path.c_str(), target, sizeof target);
        if (size < 0) return true;
        const std::string_view name(target, static_cast<std::size_t>(size));
        SystemPath next(name.starts_with('/') ? "" : DirectoryOf(path));
        if (next.size() + name.size() >= kLongestSystemPath) return false;
        path = next.Append(name);
    }
    return false;
}

}  // namespace hundredweight::platform
