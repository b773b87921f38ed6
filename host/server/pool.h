// The processes that rate for one generation of a rating service's data.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/worker_process.h"
#include "server/desk.h"
#include "session/sources.h"

namespace cwt {

using Clock = std::chrono::steady_clock;

struct PoolTerms {
    unsigned jobs = 1;
    std::chrono::seconds timeout{30};  ///< For one request.
    /// Gets the reply to the request of an id.
    std::function<void(std::uint64_t id, std::string reply)> deliver;
    /// Told of a process that was lost after the data had served, with the reason.
    std::function<void(const std::string& reason)> when_lost;
};

/// A process is given a request only when its data were looked at after it had loaded them, and one
/// that is lost is started anew only when they are still the same.
class Pool {
 public:
    Pool(Sources sources, const PoolTerms& terms) : sources_(std::move(sources)), terms_(terms) {}

    void Start();
    void End() { workers_.clear(); }

    /// Adds the processes, to be waited for.
    void AddTo(std::vector<WorkerProcess*>& processes) const;

    /// Takes what they have sent, and sees to it that they live.
    void See();

    bool HasIdle() const { return CountOf(State::kIdle) > 0; }
    bool IsBusy() const { return CountOf(State::kBusy) > 0; }
    /// How many can rate, now or after what they work on.
    std::size_t ready() const { return CountOf(State::kIdle) + CountOf(State::kBusy); }
    /// Whether all have loaded the data, and wait to be confirmed.
    bool IsLoaded() const { return CountOf(State::kLoaded) == workers_.size(); }
    /// Whether none can rate, nor will soon.
    bool IsHopeless() const;
    /// Why a process could not begin; empty when none failed to.
    const std::string& failure() const { return failure_; }

    /// Gives a request to an idle process.
    void Give(std::uint64_t id, const std::string& request);

    /// Whether a look at the data would let a process go on. From here on, Confirm speaks of those.
    bool WantsLook();

    /// The data are what they were when they were wanted to be looked at.
    void Confirm();

 private:
    enum class State { kStarting, kLoaded, kIdle, kBusy, kLost };

    struct Worker {
        std::unique_ptr<WorkerProcess> process;
        State state = State::kLost;
        bool is_looked_for = false;
        std::uint64_t request = 0;
        Clock::time_point since = {};  ///< When it was started, or given the request.
        Clock::time_point again = {};  ///< When it may be started.
        int failures = 0;              ///< Of starts, one after another.
    };

    std::size_t CountOf(State state) const;
    void StartOne(Worker& worker);
    void Take(Worker& worker, const Message& message);
    bool Deliver(Worker& worker, const std::string& bytes);
    void Lose(Worker& worker, ProblemKind kind, const std::string& reason);
    void RequireInTime(Worker& worker);

    Sources sources_;
    PoolTerms terms_;
    std::vector<Worker> workers_;
    bool has_served_ = false;
    std::string failure_;
};

}  // namespace cwt
