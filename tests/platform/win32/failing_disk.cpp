// The test program's imports of the system's file operations and of calloc lead here.
#include "support/failing_disk.h"

#include <io.h>
#include <windows.h>

#include <cstdlib>

#include "platform/win32/import_redirection.h"
#include "support/failing_system.h"

using namespace hundredweight;

namespace hundredweight {
const std::vector<Fault> kFaults = {Fault::kIoError, Fault::kAllFailFromThere, Fault::kFileEnds,
                                    Fault::kShort};
}

namespace {

/// A function of the system's, whose import has been led to one of these.
template <class Function>
Function* Redirect(const char* library, const char* name, Function* here) {
    const FARPROC system = GetProcAddress(GetModuleHandleA(library), name);
    platform::RedirectImport(GetModuleHandleA(nullptr), library, name,
                             platform::ImportedAddress(here));
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(system));
}

/// Defines a function, called Failing and its name, that comes before one of the system's, to which
/// `System` and its name leads.
#define FAILING(library, result, name, ...)                             \
    result Failing##name(__VA_ARGS__);                                  \
    auto* const System##name = Redirect(library, #name, Failing##name); \
    result Failing##name(__VA_ARGS__)

#define FAILING_CALL(result, name, ...) FAILING("msvcrt.dll", result, name, __VA_ARGS__)

FAILING_CALL(int, _open, const char* path, int flags, int mode) {
    return FailingDisk::Do(-1, [&] { return System_open(path, flags, mode); });
}

FAILING_CALL(int, _sopen, const char* path, int flags, int share, int mode) {
    return FailingDisk::Do(-1, [&] { return System_sopen(path, flags, share, mode); });
}

FAILING_CALL(int, _close, int descriptor) {
    const int result = System_close(descriptor);
    return FailingDisk::Do(-1, [&] { return result; });
}

FAILING_CALL(int, _write, int descriptor, const void* content, unsigned size) {
    return FailingDisk::Transfer(true, size, [&](std::size_t part) {
        return System_write(descriptor, content, static_cast<unsigned>(part));
    });
}

FAILING_CALL(int, _commit, int) {  // Nothing is flushed in truth: the tests are quicker so.
    return FailingDisk::NoteFlush(FailingDisk::Do(-1, [] { return 0; }));
}

FAILING_CALL(int, _read, int descriptor, void* buffer, unsigned size) {
    const std::ptrdiff_t count = FailingDisk::Transfer(false, size, [&](std::size_t part) {
        return System_read(descriptor, buffer, static_cast<unsigned>(ReadableBytes(part)));
    });
    if (FailingDisk::current != nullptr && count > 0)
        FailingDisk::current->bytes_read += static_cast<std::size_t>(count);
    return static_cast<int>(count);
}

FAILING_CALL(void*, calloc, std::size_t count, std::size_t size) {
    return AllocationFails() ? nullptr : Systemcalloc(count, size);
}

FAILING("kernel32.dll", BOOL WINAPI, MoveFileExA, const char* from, const char* to, DWORD flags) {
    FailingDisk::NoteName();
    SetLastError(ERROR_WRITE_FAULT);
    return FailingDisk::Do(FALSE, [&] { return SystemMoveFileExA(from, to, flags); });
}

FAILING("kernel32.dll", BOOL WINAPI, CopyFileA, const char* from, const char* to, BOOL once) {
    const bool copied = FailingDisk::Transfer(true, 1, [&](std::size_t) {
                            return SystemCopyFileA(from, to, once) != 0 ? 1 : -1;
                        }) > 0;
    if (FailingDisk::current != nullptr && FailingDisk::current->struck)
        SetLastError(ERROR_WRITE_FAULT);
    return copied ? TRUE : FALSE;
}

FAILING("kernel32.dll", void WINAPI, GetSystemTimeAsFileTime, FILETIME* time) {
    SystemGetSystemTimeAsFileTime(time);
    const uint64_t now = uint64_t{time->dwHighDateTime} << 32 | time->dwLowDateTime;
    const uint64_t then = now + static_cast<uint64_t>(seconds_ahead * 10000000);
    *time = {static_cast<DWORD>(then), static_cast<DWORD>(then >> 32)};
}

FAILING("kernel32.dll", BOOL WINAPI, DeleteFileA, const char* path) {
    return FailingDisk::Do(FALSE, [&] { return SystemDeleteFileA(path); });
}

}  // namespace
