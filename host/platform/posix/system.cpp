#include "platform/system.h"

#include <dlfcn.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace cwt {
namespace {

volatile std::sig_atomic_t is_interrupted = 0;
volatile std::sig_atomic_t wishes_to_end = 0, wishes_to_reload = 0;

void HandleBy(void (*handler)(int), std::initializer_list<int> signals) {
    struct sigaction action = {};
    action.sa_handler = handler;
    for (const int signal : signals) sigaction(signal, &action, nullptr);
}

std::string MarkOf(const struct stat& status) {
    const auto text = [](auto number) { return std::to_string(number) + ' '; };
    return text(status.st_dev) + text(status.st_ino) + text(status.st_size) +
           text(status.st_mtim.tv_sec) + text(status.st_mtim.tv_nsec) +
           text(status.st_ctim.tv_sec) + text(status.st_ctim.tv_nsec);
}

}  // namespace

void CatchInterrupts() {
    struct sigaction action = {};
    action.sa_handler = [](int) { is_interrupted = 1; };
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        // Without SA_RESTART, so that a wait for input ends; what nohup has put off stays so.
        struct sigaction before;
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
    }
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
}

bool IsInterrupted() {
    return is_interrupted != 0;
}

void CountWishes() {
    HandleBy([](int) { wishes_to_end = wishes_to_end + 1; }, {SIGINT, SIGTERM});
    HandleBy([](int) { wishes_to_reload = wishes_to_reload + 1; }, {SIGHUP});
    HandleBy(SIG_IGN, {SIGPIPE, SIGXFSZ});
}

Wishes WishesSoFar() {
    return {wishes_to_end, wishes_to_reload};
}

void IgnoreWishes() {
    HandleBy(SIG_IGN, {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ});
}

bool WriteToStandardError(std::string_view text) {
    pollfd standard_error{STDERR_FILENO, POLLOUT, 0};
    if (poll(&standard_error, 1, 0) <= 0 || (standard_error.revents & POLLOUT) == 0) return false;
    return write(STDERR_FILENO, text.data(), text.size()) >= 0;
}

void* FunctionOf(void* module, const char* name) {
    return dlsym(module, name);
}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

bool IsStandardStream(const std::filesystem::path& file) {
    struct stat named, open;
    if (stat(file.c_str(), &named) != 0) return false;
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        if (fstat(stream, &open) == 0 && open.st_dev == named.st_dev &&
            open.st_ino == named.st_ino) {
            return true;
        }
    }
    return false;
}

std::string ChangeMark(const std::filesystem::path& file) {
    struct stat status = {};
    return stat(file.c_str(), &status) == 0 ? MarkOf(status) : std::string();
}

std::string SettledMark(const std::filesystem::path& file) {
    constexpr time_t kSettled = 3;  // Some file systems count in steps of two seconds.
    struct stat status = {};
    timespec now = {};
    if (stat(file.c_str(), &status) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0) return {};
    return now.tv_sec - status.st_ctim.tv_sec < kSettled ? std::string() : MarkOf(status);
}

bool IsOpenToOthers(const std::filesystem::path& file) {
    struct stat status = {};
    return stat(file.c_str(), &status) != 0 || (status.st_mode & (S_IWGRP | S_IRWXO)) != 0;
}

bool SyncFile(std::FILE* file) {
    return std::fflush(file) == 0 && fdatasync(fileno(file)) == 0;
}

bool LockFile(std::FILE* file) {
    return flock(fileno(file), LOCK_EX | LOCK_NB) == 0;
}

}  // namespace cwt
