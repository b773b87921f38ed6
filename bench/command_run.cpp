#include "command_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace hundredweight::bench {
namespace {

using Clock = std::chrono::steady_clock;

/// The number behind a name in one of the system's tables; 0 when there is none.
std::uint64_t NumberIn(const std::filesystem::path& table, const std::string& name) {
    std::ifstream file(table);
    for (std::string word; file >> word;) {
        if (word != name) continue;
        std::uint64_t number = 0;
        file >> number;
        return number;
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
        constexpr std::uint64_t kKilo = 1024;
        bytes += kKilo * NumberIn(entry.path() / "smaps_rollup", "Pss:");
    }
    return bytes;
}

}  // namespace

CommandRun RunCommand(const std::string& words) {
    const auto begin = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        setpgid(0, 0);
        execl("/bin/sh", "sh", "-c", words.c_str(), nullptr);
        _exit(127);
    }
    CommandRun run;
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        run.peak_bytes = std::max(run.peak_bytes, BytesOfGroup(process));
        constexpr useconds_t kBetween = 20000;
        usleep(kBetween);
    }
    run.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    if (!WIFEXITED(status) || WEXITSTATUS(status) >= 2) throw std::runtime_error(words);
    return run;
}

}  // namespace hundredweight::bench
