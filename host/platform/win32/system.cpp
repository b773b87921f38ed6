#include "platform/system.h"

#include <windows.h>
// After what it builds upon.
#include <io.h>
#include <sys/locking.h>

#include <csignal>
#include <cstdint>
#include <string>

namespace cwt {
namespace {

volatile std::sig_atomic_t is_interrupted = 0;

void NoteInterrupt(int /*signal*/) {
    is_interrupted = 1;
}

}  // namespace

void CatchInterrupts() {
    std::signal(SIGINT, NoteInterrupt);
    std::signal(SIGTERM, NoteInterrupt);
}

bool IsInterrupted() {
    return is_interrupted != 0;
}

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

bool IsStandardStream(const std::filesystem::path& /*file*/) {
    return false;  // Nothing tells.
}

std::string ChangeMark(const std::filesystem::path& file) {
    // The standard library tells whole seconds, in which a file may be written twice.
    WIN32_FILE_ATTRIBUTE_DATA found = {};
    if (!GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &found)) return {};
    const auto whole = [](DWORD high, DWORD low) {
        return std::to_string(std::uint64_t{high} << 32U | low);
    };
    const FILETIME& written = found.ftLastWriteTime;
    return whole(found.nFileSizeHigh, found.nFileSizeLow) + ' ' +
           whole(written.dwHighDateTime, written.dwLowDateTime);
}

std::string SettledMark(const std::filesystem::path& /*file*/) {
    return {};  // A directory's time may be written late.
}

bool SyncFile(std::FILE* file) {
    return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
}

bool LockFile(std::FILE* file) {
    // A byte far behind the end, which may be locked though nothing is there.
    constexpr long kLockedByte = 0x7FFFFFFE;
    const long place = std::ftell(file);
    std::fseek(file, kLockedByte, SEEK_SET);
    const bool is_ours = _locking(_fileno(file), _LK_NBLCK, 1) == 0;
    std::fseek(file, place, SEEK_SET);
    return is_ours;
}

}  // namespace cwt
