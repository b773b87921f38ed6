// A process beside this one that works on messages, so that what crashes there costs no more than
// the message at hand.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace cwt {

struct Message {
    std::uint32_t kind = 0;
    std::string bytes;
};

/// The worker's end.
class Foreman {
 public:
    Foreman(int from, int to, std::atomic<std::uint32_t>& step)
        : from_(from), to_(to), step_(step) {}

    /// The next message; nothing when there will be none.
    std::optional<Message> Receive();

    /// Ends the process when nobody is there to read it.
    void Send(const Message& message);

    /// Tells what is worked on, for the case that the process does not live to tell.
    void Tell(std::uint32_t step) { step_.store(step, std::memory_order_relaxed); }

 private:
    int from_, to_;
    std::atomic<std::uint32_t>& step_;
};

/// The process, which ends with this object. It has none of the files that were open here but the
/// standard ones, and what it prints goes to standard error.
class WorkerProcess {
 public:
    explicit WorkerProcess(const std::function<void(Foreman&)>& work);
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Does not wait for the worker to take it.
    void Send(const Message& message);

    /// A message that has arrived whole.
    std::optional<Message> Receive();

    /// Whether the process has ended; what it sent before can still be received.
    bool has_ended() const { return has_ended_; }

    /// Lets it end in good order when it has done what it was sent.
    void Finish();

    /// Ends the process, unless it has ended. Result: how it did, in words.
    std::string End();

    /// What it is working on, as it told.
    std::uint32_t step() const { return step_->load(std::memory_order_relaxed); }

    /// Waits until one of them has something to receive or has ended, and no longer than that.
    static void Await(std::span<WorkerProcess* const> workers, std::chrono::milliseconds longest);

 private:
    void Write();
    bool Read();
    void LookForEnd();

    pid_t process_ = -1;
    int to_ = -1, from_ = -1;
    std::atomic<std::uint32_t>* step_ = nullptr;  ///< Both processes see it.
    std::deque<std::string> outgoing_;
    std::size_t written_ = 0;  ///< Bytes of the first of them.
    std::string incoming_;
    bool has_ended_ = false;
};

}  // namespace cwt
