#include "platform/file.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <string_view>

#include "platform/path.h"

namespace hundredweight::platform {
namespace {

constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

/// A descriptor that the record can hold: 0 means not open there, and handles are 16 bits wide.
int16_t ToHandle(int descriptor) {
    if (descriptor == 0) {
        descriptor = _dup(0);
        _close(0);
        // Like the first, the copy is not for processes that the host starts.
        const auto file = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
        SetHandleInformation(file, HANDLE_FLAG_INHERIT, 0);
    }
    if (descriptor <= std::numeric_limits<int16_t>::max()) return static_cast<int16_t>(descriptor);
    _close(descriptor);
    return -1;
}

int16_t OpenRegularFile(const char* path, int access, FileState* state) {
    const int descriptor =
        _sopen(path, access | _O_BINARY | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
    if (descriptor < 0) return -1;
    struct _stati64 status = {};
    if (_fstati64(descriptor, &status) != 0 || (status.st_mode & _S_IFMT) != _S_IFREG) {
        _close(descriptor);
        return -1;
    }
    // A system that tells no more than the size has a file read anew each time.
    if (!StateOf(descriptor, state)) *state = FileState{.size = status.st_size};
    return ToHandle(descriptor);
}

unsigned TransferSize(std::size_t left) {
    return static_cast<unsigned>(std::min(left, kLargestTransfer));
}

bool WriteBytes(int descriptor, const void* content, std::size_t size) {
    const auto* const bytes = static_cast<const char*>(content);
    std::size_t done = 0;
    while (done < size) {
        const int count = _write(descriptor, bytes + done, TransferSize(size - done));
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

/// Scanners and indexers hold a new file for a moment.
bool Move(const char* from, const char* to, DWORD flags) {
    constexpr int kTries = 5;
    constexpr DWORD kPause = 40;  // Milliseconds.
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExA(from, to, flags | MOVEFILE_WRITE_THROUGH) != 0) return true;
        const DWORD error = GetLastError();
        const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
        if (!held || attempt == kTries) return false;
        Sleep(kPause);
    }
}

/// Whether a copy had been begun, and is ours, when this error came.
bool CameWhileCopying(DWORD error) {
    return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL ||
           error == ERROR_WRITE_FAULT || error == ERROR_READ_FAULT;
}

/// Removes a copy, which may have taken over the protection of its original.
void RemoveCopy(const char* path) {
    SetFileAttributesA(path, FILE_ATTRIBUTE_NORMAL);
    RemoveFile(path);
}

/// Ends the writing of a new file, which is on disk when this returns, or there is none.
WriteOutcome Finish(int descriptor, bool written, const char* path) {
    const bool on_disk = written && _commit(descriptor) == 0;
    if (_close(descriptor) == 0 && on_disk) return WriteOutcome::kWritten;
    RemoveFile(path);
    return WriteOutcome::kNotWritten;
}

}  // namespace

int16_t OpenForReading(const char* path, FileState* state) {
    return OpenRegularFile(path, _O_RDONLY, state);
}

int16_t OpenForUpdate(const char* path, FileState* state) {
    return OpenRegularFile(path, _O_RDWR, state);
}

bool FileExists(const char* path) {
    if (GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES) return true;
    const DWORD error = GetLastError();
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
}

bool IsSameFile(const char* /*a*/, const char* /*b*/) {
    return false;  // A link is itself replaced.
}

std::FILE* OpenStreamForReading(const char* path) {
    FileState state;
    const int16_t handle = OpenForReading(path, &state);
    if (handle == -1) return nullptr;
    std::FILE* const stream = _fdopen(handle, "rb");
    if (stream == nullptr) _close(handle);
    return stream;
}

bool SeekTo(int descriptor, int64_t position) {
    return _lseeki64(descriptor, position, SEEK_SET) == position;
}

std::size_t ReadBytes(int descriptor, void* buffer, std::size_t size) {
    auto* const bytes = static_cast<char*>(buffer);
    std::size_t done = 0;
    while (done < size) {
        const int count = _read(descriptor, bytes + done, TransferSize(size - done));
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::size_t ReadBytesAt(int descriptor, int64_t position, void* buffer, std::size_t size) {
    return SeekTo(descriptor, position) ? ReadBytes(descriptor, buffer, size) : 0;
}

void CloseFile(int descriptor) {
    _close(descriptor);
}

SystemPath FileToReplace(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    constexpr DWORD kKept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    const bool kept = attributes != INVALID_FILE_ATTRIBUTES && (attributes & kKept) != 0;
    return kept ? SystemPath() : SystemPath(std::string_view(path));
}

WriteOutcome WriteNewFile(const char* path, const void* content, std::size_t size,
                          const char* /*model*/) {  // Who may use a file, its directory tells.
    const int descriptor = _open(path, _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                                 _S_IREAD | _S_IWRITE);
    if (descriptor < 0) return WriteOutcome::kNotCreated;
    return Finish(descriptor, WriteBytes(descriptor, content, size), path);
}

WriteOutcome CopyToNewFile(const char* from, const char* to) {
    constexpr BOOL kUnlessExists = TRUE;
    if (CopyFileA(from, to, kUnlessExists) == 0) {
        if (CameWhileCopying(GetLastError())) RemoveCopy(to);
        return WriteOutcome::kNotCreated;
    }
    // The copy of a protected file is not protected: its user is to write it.
    SetFileAttributesA(to, FILE_ATTRIBUTE_NORMAL);
    const int descriptor = _open(to, _O_RDWR | _O_BINARY | _O_NOINHERIT);
    if (descriptor >= 0) return Finish(descriptor, true, to);
    RemoveFile(to);
    return WriteOutcome::kNotWritten;
}

bool RenameOver(const char* from, const char* to) {
    return Move(from, to, MOVEFILE_REPLACE_EXISTING);
}

bool RenameUnlessExists(const char* from, const char* to) {
    return Move(from, to, 0);
}

void RemoveFile(const char* path) {
    DeleteFileA(path);
}

uint32_t ProcessNumber() {
    return GetCurrentProcessId();
}

uint32_t MachineNumber() {
    char name[MAX_COMPUTERNAME_LENGTH + 1] = "";
    DWORD size = sizeof name;
    GetComputerNameA(name, &size);
    return static_cast<uint32_t>(std::hash<std::string_view>()(name));
}

bool ProcessRuns(uint32_t process) {
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (handle == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
    const bool runs = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return runs;
}

std::string_view DirectoryOf(std::string_view path) {
    const PathParts parts = SplitPathParts(path);
    return path.substr(0, parts.drive.size() + parts.directory.size());
}

bool IsSeparator(char character) {
    return character == '\\';
}

bool IsSameName(std::string_view a, std::string_view b) {
    // Blanks and dots at the end of a name are not part of it.
    const auto name = [](std::string_view text) {
        return text.substr(0, text.find_last_not_of(" .") + 1);
    };
    return EqualIgnoringCase(name(a), name(b));
}

}  // namespace hundredweight::platform
