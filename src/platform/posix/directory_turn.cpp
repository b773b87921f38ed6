#include "platform/directory_turn.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <thread>

#include "platform/file.h"
#include "platform/posix/directory.h"
#include "platform/temporary_name.h"

namespace hundredweight::platform {
namespace {

using std::chrono::steady_clock;
constexpr std::chrono::seconds kLongestWait(10);
constexpr std::chrono::milliseconds kPause(2);

enum class Locking { kLocked, kBusy, kUnknown };

/// Locks an open directory. Some file systems know no such lock.
Locking Lock(int directory) {
    const steady_clock::time_point end = steady_clock::now() + kLongestWait;
    while (Uninterrupted([&] { return flock(directory, LOCK_EX | LOCK_NB); }) != 0) {
        if (errno != EWOULDBLOCK) return Locking::kUnknown;
        if (steady_clock::now() > end) return Locking::kBusy;
        std::this_thread::sleep_for(kPause);
    }
    return Locking::kLocked;
}

/// Removes the temporaries of a directory that nobody finishes any more.
void RemoveTemporaries(DIR* directory, bool alone) {
    const std::time_t now = std::time(nullptr);
    while (const dirent* entry = readdir(directory)) {
        struct stat status = {};
        if (std::string_view(entry->d_name).starts_with("HWT") &&
            fstatat(dirfd(directory), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISREG(status.st_mode) && IsAbandoned(entry->d_name, now - status.st_mtime, alone)) {
            Uninterrupted([&] { return unlinkat(dirfd(directory), entry->d_name, 0); });
        }
    }
}

/// What tells a path's directory from others; false when there is none.
bool Identify(std::string_view path, std::uint64_t (&identity)[2]) {
    struct stat status = {};
    if (stat(DirectoryName(path).c_str(), &status) != 0) return false;
    identity[0] = status.st_dev;
    identity[1] = status.st_ino;
    return true;
}

}  // namespace

DirectoryTurn::DirectoryTurn(const char* path) {
    SystemPath file{std::string_view(path)};
    if (!FollowLinks(file) || !Identify(file, directory_)) return;
    const Directory directory = OpenDirectoryOf(file);
    if (!directory) {
        // One that may be searched but not listed cannot be locked.
        if (errno == EACCES) state_ = State::kUnguarded;
        return;
    }
    const Locking locking = Lock(dirfd(directory.get()));
    if (locking == Locking::kBusy) return;
    if (locking == Locking::kLocked) {
        // The lock lasts as long as a descriptor of the same opening.
        lock_ = Uninterrupted([&] { return fcntl(dirfd(directory.get()), F_DUPFD_CLOEXEC, 1); });
        if (lock_ < 0) return;
    }
    state_ = locking == Locking::kLocked ? State::kAlone : State::kUnguarded;
    RemoveTemporaries(directory.get(), alone());
}

DirectoryTurn::~DirectoryTurn() {
    if (lock_ < 0) return;
    // A process that was forked meanwhile has the lock too, and would keep it.
    const int lock = static_cast<int>(lock_);
    Uninterrupted([&] { return flock(lock, LOCK_UN); });
    Close(lock);
}

bool DirectoryTurn::Covers(const char* path) const {
    std::uint64_t identity[2];
    return Identify(path, identity) && identity[0] == directory_[0] && identity[1] == directory_[1];
}

}  // namespace hundredweight::platform
