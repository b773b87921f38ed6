#include "command_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace hundredweight::bench {
namespace {

/// Starts a program in a process group of its own. It runs when this returns: nothing that is
/// seen of it is still ours.
pid_t Start(Words& words) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, arguments[0], &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error(words[0] + ": does not start");
    return process;
}

int ExitCode(const Words& words, int status) {
    if (!WIFEXITED(status) || WEXITSTATUS(status) >= 2) {
        throw std::runtime_error(words[0] + ": did not end well");
    }
    return WEXITSTATUS(status);
}

/// What a process has of its own, in bytes; 0 when it has ended.
std::uint64_t BytesOf(const std::filesystem::path& process) {
    std::ifstream file(process / "smaps_rollup");
    for (std::string word; file >> word;) {
        if (word != "Pss:") continue;
        std::uint64_t kilobytes = 0;
        file >> kilobytes;
        return kilobytes * 1024;
    }
    return 0;
}

/// Bytes of all processes of a group.
std::uint64_t BytesOfGroup(pid_t group) {
    std::uint64_t bytes = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != name.npos) continue;
        if (getpgid(static_cast<pid_t>(std::stol(name))) != group) continue;
        bytes += BytesOf(entry.path());
    }
    return bytes;
}

}  // namespace

int RunCommand(Words words) {
    const pid_t process = Start(words);
    int status = 0;
    waitpid(process, &status, 0);
    return ExitCode(words, status);
}

std::uint64_t PeakBytes(Words words) {
    constexpr const char* kPeak = "peak";
    const Words before = {"/usr/bin/time", "--quiet", "--format=%M", "--output", kPeak};
    words.insert(words.begin(), before.begin(), before.end());
    RunCommand(words);
    std::uint64_t kilobytes = 0;
    if (!(std::ifstream(kPeak) >> kilobytes)) throw std::runtime_error("no peak of memory");
    return kilobytes * 1024;
}

std::uint64_t PeakBytesOfAll(Words words) {
    const pid_t process = Start(words);
    std::uint64_t most = 0;
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        most = std::max(most, BytesOfGroup(process));
        constexpr useconds_t kBetween = 20000;
        usleep(kBetween);
    }
    ExitCode(words, status);
    return most;
}

}  // namespace hundredweight::bench
