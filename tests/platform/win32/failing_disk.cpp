// The test program's imports of the system's file operations and of calloc lead here.
#include "support/failing_disk.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdlib>
#include <filesystem>

#include "platform/win32/import_redirection.h"
#include "support/failing_system.h"

using namespace hundredweight;

namespace {

void NoteCreation(const char* path) {
    if (FailingDisk::current != nullptr)
        FailingDisk::current->created.push_back(std::filesystem::absolute(path).string());
}

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
    if ((flags & _O_CREAT) != 0) NoteCreation(path);
    return FailingDisk::Strikes() ? FailingDisk::Fail() : System_open(path, flags, mode);
}

FAILING_CALL(int, _sopen, const char* path, int flags, int share, int mode) {
    return FailingDisk::Strikes() ? FailingDisk::Fail() : System_sopen(path, flags, share, mode);
}

FAILING_CALL(int, _close, int descriptor) {
    const int result = System_close(descriptor);
    return FailingDisk::Strikes() ? FailingDisk::Fail() : result;
}

FAILING_CALL(int, _write, int descriptor, const void* content, unsigned size) {
    if (!FailingDisk::ContentStrikes()) return System_write(descriptor, content, size);
    return System_write(descriptor, content, size / 2) < 0 ? -1 : FailingDisk::Fail();
}

FAILING_CALL(int, _commit, int) {  // Nothing is flushed in truth: the tests are quicker so.
    return FailingDisk::FlushStrikes() ? FailingDisk::Fail() : 0;
}

FAILING_CALL(int, _read, int descriptor, void* buffer, unsigned size) {
    if (FailingDisk::Strikes()) return FailingDisk::Fail();
    const int count = System_read(descriptor, buffer, static_cast<unsigned>(ReadableBytes(size)));
    FailingDisk::CountRead(count);
    return count;
}

FAILING_CALL(void*, calloc, std::size_t count, std::size_t size) {
    return AllocationFails() ? nullptr : Systemcalloc(count, size);
}

/// What a struck function of the kernel's comes to.
BOOL FailInKernel() {
    FailingDisk::Fail();
    SetLastError(ERROR_WRITE_FAULT);
    return FALSE;
}

FAILING("kernel32.dll", BOOL WINAPI, MoveFileExA, const char* from, const char* to, DWORD flags) {
    FailingDisk::NoteName();
    return FailingDisk::Strikes() ? FailInKernel() : SystemMoveFileExA(from, to, flags);
}

FAILING("kernel32.dll", BOOL WINAPI, CopyFileA, const char* from, const char* to, BOOL once) {
    NoteCreation(to);
    const bool strikes = FailingDisk::ContentStrikes();
    const BOOL copied = SystemCopyFileA(from, to, once);
    return strikes ? FailInKernel() : copied;
}

FAILING("kernel32.dll", BOOL WINAPI, DeleteFileA, const char* path) {
    return FailingDisk::Strikes() ? FailInKernel() : SystemDeleteFileA(path);
}

}  // namespace
