// One load of the data of a rating service.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/worker_process.h"
#include "server/pool.h"
#include "session/sources.h"

namespace cwt {

/// It serves when all its processes have loaded the same data: one keeps what the data were and
/// looks at them, one inspects the set and ends, and the pool's rate.
class Generation {
 public:
    enum class Phase { kLookingAt, kLoading, kServing, kFailed };

    /// With `patient`, it begins when the data have not changed for a second.
    Generation(std::uint64_t number, const Sources& sources, const PoolTerms& terms, bool patient);

    std::uint64_t number() const { return number_; }
    const Sources& sources() const { return sources_; }
    Phase phase() const { return phase_; }
    Pool& pool() { return pool_; }

    /// Why it failed.
    const std::string& failure() const { return failure_; }
    /// What is no longer as it was loaded, at the last look; empty when nothing.
    const std::string& change() const { return change_; }
    /// What the set is, as JSON; empty when the inspection has not lived to tell.
    const std::string& set() const { return set_; }

    void AddTo(std::vector<WorkerProcess*>& processes) const;
    void See();

    /// Has the data looked at soon.
    void LookAgain() { is_look_wanted_ = true; }

    /// Of those who want more than one request answered by this generation.
    int pins = 0;

 private:
    void SeeKeeper();
    void SeeInspector();
    void Load();
    void Look();
    void Fail(const std::string& reason);

    const std::uint64_t number_;
    const Sources sources_;
    Pool pool_;
    std::unique_ptr<WorkerProcess> keeper_, inspector_;
    Phase phase_ = Phase::kLookingAt;
    std::string failure_, change_, set_;
    bool is_look_wanted_ = false;
    bool is_looking_ = false;
    Clock::time_point since_ = Clock::now();  ///< When this phase began.
    Clock::time_point next_look_ = {}, looked_at_ = {};
};

}  // namespace cwt
