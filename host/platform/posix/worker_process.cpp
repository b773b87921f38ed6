#include "platform/worker_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

namespace cwt {
namespace {

constexpr std::size_t kHead = 2 * sizeof(std::uint32_t);  ///< Kind and size before the bytes.
constexpr int kPipeSize = 1 << 20;
constexpr int kPatience = 2000;  ///< Milliseconds for an orderly end.

[[noreturn]] void FailToMake(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::string Pack(const Message& message) {
    const auto size = static_cast<std::uint32_t>(message.bytes.size());
    std::string packed(kHead, '\0');
    std::memcpy(packed.data(), &message.kind, sizeof message.kind);
    std::memcpy(packed.data() + sizeof message.kind, &size, sizeof size);
    return packed += message.bytes;
}

std::uint32_t NumberAt(const char* bytes) {
    std::uint32_t number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

/// Reads so many bytes; false at the end.
bool ReadAll(int from, char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = read(from, bytes, size);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

struct Pipe {
    int from = -1, to = -1;

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        for (const int end : {from, to}) {
            if (end >= 0) close(end);
        }
    }
    Pipe() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) FailToMake("a pipe to a worker process");
        from = ends[0];
        to = ends[1];
        fcntl(to, F_SETPIPE_SZ, kPipeSize);
    }
};

/// A number in memory that a process and its children share.
std::atomic<std::uint32_t>* NewStep() {
    using Step = std::atomic<std::uint32_t>;
    void* const memory =
        mmap(nullptr, sizeof(Step), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) FailToMake("memory for a worker process");
    return new (memory) Step(0);
}

/// Goes on as the worker, which sees to nothing but its two pipes. What a partner throws, or ends
/// the thread by, goes no further up: the objects there are the first process's.
[[noreturn]] void Work(int from, int to, std::atomic<std::uint32_t>& step,
                       const std::function<void(Foreman&)>& work) noexcept {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // An interrupt from the keyboard goes to all processes; the first of them decides.
    for (const int signal : {SIGINT, SIGHUP}) std::signal(signal, SIG_IGN);
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    const auto low = static_cast<unsigned>(std::min(from, to));
    const auto high = static_cast<unsigned>(std::max(from, to));
    close_range(STDERR_FILENO + 1, low - 1, 0);
    close_range(low + 1, high - 1, 0);
    close_range(high + 1, ~0U, 0);
    Foreman foreman(from, to, step);
    work(foreman);
    _exit(0);
}

}  // namespace

std::optional<Message> Foreman::Receive() {
    char head[kHead];
    if (!ReadAll(from_, head, sizeof head)) return std::nullopt;
    Message message{NumberAt(head), std::string(NumberAt(head + sizeof(std::uint32_t)), '\0')};
    if (!ReadAll(from_, message.bytes.data(), message.bytes.size())) return std::nullopt;
    return message;
}

void Foreman::Send(const Message& message) {
    const std::string packed = Pack(message);
    for (std::size_t written = 0; written < packed.size();) {
        const ssize_t count = write(to_, packed.data() + written, packed.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) _exit(0);
        written += static_cast<std::size_t>(count);
    }
}

WorkerProcess::WorkerProcess(const std::function<void(Foreman&)>& work) {
    Pipe to_worker, from_worker;
    step_ = NewStep();
    std::fflush(nullptr);
    process_ = fork();
    if (process_ < 0) {
        const int reason = errno;
        munmap(step_, sizeof *step_);
        errno = reason;
        FailToMake("a worker process");
    }
    if (process_ == 0) Work(to_worker.from, from_worker.to, *step_, work);
    to_ = std::exchange(to_worker.to, -1);
    from_ = std::exchange(from_worker.from, -1);
    fcntl(to_, F_SETFL, O_NONBLOCK);
    fcntl(from_, F_SETFL, O_NONBLOCK);
}

WorkerProcess::~WorkerProcess() {
    End();
    if (to_ >= 0) close(to_);
    close(from_);
    munmap(step_, sizeof *step_);
}

void WorkerProcess::Send(const Message& message) {
    outgoing_.push_back(Pack(message));
    Write();
}

std::optional<Message> WorkerProcess::Receive() {
    if (incoming_.size() < kHead) return std::nullopt;
    const std::size_t size = NumberAt(incoming_.data() + sizeof(std::uint32_t));
    if (incoming_.size() - kHead < size) return std::nullopt;
    Message message{NumberAt(incoming_.data()), incoming_.substr(kHead, size)};
    incoming_.erase(0, kHead + size);
    return message;
}

void WorkerProcess::Finish() {
    close(to_);
    to_ = -1;
    pollfd end{from_, POLLIN, 0};
    while (!has_ended_ && poll(&end, 1, kPatience) > 0) Read();
}

std::string WorkerProcess::End() {
    if (process_ < 0) return {};
    // Who has closed his pipe is about to end.
    siginfo_t ended = {};
    for (int waited = 0; has_ended_ && waited < kPatience; ++waited) {
        waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT);
        if (ended.si_pid != 0) break;
        poll(nullptr, 0, 1);
    }
    kill(process_, SIGKILL);
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
    process_ = -1;
    has_ended_ = true;
    if (WIFEXITED(status)) return "exit code " + std::to_string(WEXITSTATUS(status));
    const int signal = WTERMSIG(status);
    return "signal " + std::to_string(signal) + " (" + strsignal(signal) + ")";
}

/// Writes what the pipe takes.
void WorkerProcess::Write() {
    while (!outgoing_.empty()) {
        const std::string& first = outgoing_.front();
        const ssize_t count = write(to_, first.data() + written_, first.size() - written_);
        if (count < 0) return;  // Full, or the worker has ended, which its other pipe tells.
        written_ += static_cast<std::size_t>(count);
        if (written_ < first.size()) return;
        outgoing_.pop_front();
        written_ = 0;
    }
}

/// Reads what the pipe holds. Result: whether that was something.
bool WorkerProcess::Read() {
    static char buffer[kPipeSize];
    const ssize_t count = read(from_, buffer, sizeof buffer);
    if (count > 0) incoming_.append(buffer, static_cast<std::size_t>(count));
    if (count == 0) has_ended_ = true;
    return count > 0;
}

/// A partner's processes may hold the pipe open when this one has ended.
void WorkerProcess::LookForEnd() {
    siginfo_t ended = {};
    if (has_ended_ || process_ < 0) return;
    waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT);
    if (ended.si_pid == 0) return;
    while (Read()) continue;
    has_ended_ = true;
}

void WorkerProcess::Await(std::span<WorkerProcess* const> workers,
                          std::chrono::milliseconds longest) {
    std::vector<pollfd> ends;
    ends.reserve(2 * workers.size());
    for (const WorkerProcess* worker : workers) {
        ends.push_back({worker->has_ended_ ? -1 : worker->from_, POLLIN, 0});
        ends.push_back({worker->outgoing_.empty() ? -1 : worker->to_, POLLOUT, 0});
    }
    const int ready = poll(ends.data(), ends.size(), static_cast<int>(longest.count()));
    for (std::size_t i = 0; i < workers.size(); ++i) {
        if (ready > 0 && ends[2 * i].revents != 0) workers[i]->Read();
        if (ready > 0 && ends[2 * i + 1].revents != 0) workers[i]->Write();
        workers[i]->LookForEnd();
    }
}

}  // namespace cwt
