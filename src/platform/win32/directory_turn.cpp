#include "platform/directory_turn.h"

#include <windows.h>

#include <cstdio>

#include "platform/file.h"
#include "platform/temporary_name.h"

namespace hundredweight::platform {
namespace {

constexpr DWORD kLongestWait = 10000;  // Milliseconds.

std::int64_t Seconds(const FILETIME& time) {
    constexpr std::uint64_t kUnitsInSecond = 10000000;
    const std::uint64_t units = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    return static_cast<std::int64_t>(units / kUnitsInSecond);
}

SystemPath InDirectoryOf(std::string_view path, std::string_view name) {
    return SystemPath(DirectoryOf(path)).Append(name);
}

/// What tells a path's directory from others; false when the system does not say.
bool Identify(const char* path, std::uint64_t (&identity)[2]) {
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE directory = CreateFileA(InDirectoryOf(path, ".").c_str(), 0, kShared, nullptr,
                                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (directory == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool known = GetFileInformationByHandle(directory, &information) != 0;
    CloseHandle(directory);
    identity[0] = information.dwVolumeSerialNumber;
    identity[1] = std::uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow;
    return known;
}

/// A mutex that all processes of the machine know by the directory's identity.
HANDLE OpenMutexOf(const std::uint64_t (&identity)[2]) {
    char name[64];
    std::snprintf(name, sizeof name, "Global\\Hundredweight-%08lx-%08lx%08lx",
                  static_cast<unsigned long>(identity[0]),
                  static_cast<unsigned long>(identity[1] >> 32),
                  static_cast<unsigned long>(identity[1] & 0xFFFFFFFF));
    return CreateMutexA(nullptr, FALSE, name);
}

/// Removes the temporaries of a path's directory that nobody finishes any more.
void RemoveTemporaries(const char* path, bool alone) {
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA(InDirectoryOf(path, "HWT*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    do {
        if (IsAbandoned(entry.cFileName, Seconds(now) - Seconds(entry.ftLastWriteTime), alone)) {
            RemoveFile(InDirectoryOf(path, entry.cFileName).c_str());
        }
    } while (FindNextFileA(search, &entry) != 0);
    FindClose(search);
}

}  // namespace

DirectoryTurn::DirectoryTurn(const char* path) {
    const HANDLE mutex = Identify(path, directory_) ? OpenMutexOf(directory_) : nullptr;
    state_ = State::kUnguarded;
    if (mutex != nullptr) {
        lock_ = reinterpret_cast<std::intptr_t>(mutex);
        const DWORD waited = WaitForSingleObject(mutex, kLongestWait);
        // What a process left unfinished that died in its turn is a temporary.
        const bool taken = waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED;
        state_ = taken ? State::kAlone : State::kNotTaken;
    }
    if (*this) RemoveTemporaries(path, alone());
}

DirectoryTurn::~DirectoryTurn() {
    if (lock_ == -1) return;
    const auto mutex = reinterpret_cast<HANDLE>(lock_);
    if (alone()) ReleaseMutex(mutex);
    CloseHandle(mutex);
}

bool DirectoryTurn::Covers(const char* path) const {
    std::uint64_t identity[2] = {};
    return !Identify(path, identity) ||
           (identity[0] == directory_[0] && identity[1] == directory_[1]);
}

}  // namespace hundredweight::platform
