// Files that take another's place.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "platform/file.h"
#include "platform/posix/directory.h"

namespace hundredweight::platform {
namespace {

enum class Owner { kKept, kWriter };

/// Creates a file of a name that nothing has yet.
int CreateAnew(const char* path, mode_t rights) {
    constexpr int kAnew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    return Uninterrupted([&] { return open(path, kAnew, rights); });
}

bool WriteBytes(int descriptor, const void* content, std::size_t size) {
    const auto* const bytes = static_cast<const char*>(content);
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count =
            Uninterrupted([&] { return write(descriptor, bytes + done, size - done); });
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
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

/// Gives a new file the rights of another, and nobody more: without the other's group, a group has
/// what all have. A file of the writer's own is the writer's to change.
bool GiveRights(int descriptor, const struct stat& source, Owner owner) {
    const auto change_owner = [&](uid_t user) {
        return Uninterrupted([&] { return fchown(descriptor, user, source.st_gid); }) == 0;
    };
    constexpr uid_t kAsItIs = static_cast<uid_t>(-1);
    if (owner == Owner::kWriter || !change_owner(source.st_uid)) change_owner(kAsItIs);
    struct stat now = {};
    if (fstat(descriptor, &now) != 0) return false;
    mode_t rights = source.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    if (now.st_gid != source.st_gid) rights &= ~static_cast<mode_t>(S_IRWXG) | (rights << 3);
    if (owner == Owner::kWriter || now.st_uid != source.st_uid) rights |= S_IRUSR | S_IWUSR;
    // Some file systems know no rights; the file is the writer's alone then.
    constexpr int kUnknown[] = {EPERM, EINVAL, ENOSYS, EOPNOTSUPP};
    return Uninterrupted([&] { return fchmod(descriptor, rights); }) == 0 ||
           std::find(std::begin(kUnknown), std::end(kUnknown), errno) != std::end(kUnknown);
}

/// Ends the writing of a new file, which is on disk when this returns, or there is none.
WriteOutcome Finish(int descriptor, bool written, const char* path) {
    const bool on_disk = written && Uninterrupted([&] { return fsync(descriptor); }) == 0;
    if (Close(descriptor) && on_disk) return WriteOutcome::kWritten;
    RemoveFile(path);
    return WriteOutcome::kNotWritten;
}

/// Flushes a name that was given in a path's directory.
void FlushDirectoryOf(const char* path) {
    const Directory directory = OpenDirectoryOf(path);
    if (directory) Uninterrupted([&] { return fsync(dirfd(directory.get())); });
}

/// Whether a file may be written, through the links that lead to it; or nothing has the name.
bool MayBeReplaced(const char* path) {
    struct stat status = {};
    if (stat(path, &status) != 0) return errno == ENOENT && lstat(path, &status) != 0;
    constexpr mode_t kWritable = S_IWUSR | S_IWGRP | S_IWOTH;
    // One without any such right is protected, also from a user who may do all.
    return S_ISREG(status.st_mode) && (status.st_mode & kWritable) != 0 &&
           faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) == 0;
}

}  // namespace

SystemPath FileToReplace(const char* path) {
    SystemPath file{std::string_view(path)};
    if (!ExistsExactly(path)) {
        const Directory directory = OpenDirectoryOf(path);
        const EntryName other_case =
            FindIgnoringCase(directory.get(), LastComponent(path), Kind::kRegularFile);
        if (!other_case.empty()) file = SystemPath(DirectoryOf(path)).Append(other_case.text);
    }
    return MayBeReplaced(file.c_str()) && FollowLinks(file) ? file : SystemPath();
}

WriteOutcome WriteNewFile(const char* path, const void* content, std::size_t size,
                          const char* model) {
    struct stat source = {};
    const bool has_model = model != nullptr && stat(model, &source) == 0;
    const int descriptor = CreateAnew(path, has_model ? 0600 : 0666);
    if (descriptor < 0) return WriteOutcome::kNotCreated;
    const bool written = WriteBytes(descriptor, content, size) &&
                         (!has_model || GiveRights(descriptor, source, Owner::kKept));
    return Finish(descriptor, written, path);
}

WriteOutcome CopyToNewFile(const char* from, const char* to) {
    FileState state;
    const int16_t source = OpenForReading(from, &state);
    if (source == -1) return WriteOutcome::kNotCreated;
    WriteOutcome outcome = WriteOutcome::kNotCreated;
    const int descriptor = CreateAnew(to, 0600);
    if (descriptor >= 0) {
        struct stat status = {};
        const bool written = fstat(source, &status) == 0 &&
                             CopyBytes(source, descriptor, state.size) &&
                             GiveRights(descriptor, status, Owner::kWriter);
        outcome = Finish(descriptor, written, to);
    }
    CloseFile(source);
    return outcome;
}

bool RenameOver(const char* from, const char* to) {
    if (Uninterrupted([&] { return rename(from, to); }) != 0) return false;
    FlushDirectoryOf(to);
    return true;
}

bool RenameUnlessExists(const char* from, const char* to) {
    const auto rename_once = [&] {
        return renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
    };
    if (Uninterrupted(rename_once) != 0) {
        // Some file systems know the one way, some the other.
        if (errno == EEXIST || Uninterrupted([&] { return link(from, to); }) != 0) return false;
        RemoveFile(from);
    }
    FlushDirectoryOf(to);
    return true;
}

void RemoveFile(const char* path) {
    Uninterrupted([&] { return unlink(path); });
}

}  // namespace hundredweight::platform
