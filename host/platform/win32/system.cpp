#include "platform/system.h"

#include <io.h>
#include <sys/locking.h>

#include <csignal>

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
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file, error).time_since_epoch().count();
    return std::to_string(std::filesystem::file_size(file, error)) + ' ' + std::to_string(time);
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
