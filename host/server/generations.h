// The generations of a rating service's data: the current one, those before that have something to
// finish, and the next one while it loads.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "server/generation.h"

namespace cwt {

class Generations {
 public:
    /// With `watch`, changed data are loaded unasked.
    Generations(Sources sources, PoolTerms pool, bool watch);

    /// Begins one on the data as they are now, in the place of one that is not ready yet. A patient
    /// one waits until the data are still.
    void Begin(bool patient);

    /// Begins no more of its own accord.
    void Stop() { is_stopping_ = true; }

    void AddTo(std::vector<WorkerProcess*>& processes) const;

    /// Sees to all of them, and lets the next one serve when it is ready. Throws Broken when the
    /// first one does not load.
    void See();

    /// The one that new requests go to; null until one has loaded.
    Generation* current() { return current_.get(); }

    /// The current one or one before; null when it is no more.
    Generation* Find(std::uint64_t number);

    /// Nobody wants more than one request of any of them.
    void Unpin();

    bool is_loading() const { return attempt_ != nullptr; }
    std::uint64_t failures() const { return failures_; }
    /// Why the last load failed; empty when it did not.
    const std::string& failure() const { return failure_; }

 private:
    std::vector<Generation*> Serving();
    void SeeAttempt();
    void LookForChanges();

    const Sources sources_;
    const PoolTerms pool_;
    const bool watch_;
    std::unique_ptr<Generation> attempt_, current_;
    std::unique_ptr<Generation> failed_;  ///< The last one, to know when its data have changed.
    std::vector<std::unique_ptr<Generation>> older_;
    std::uint64_t count_ = 0, failures_ = 0;
    std::string failure_;
    bool is_stopping_ = false;
    Clock::time_point next_look_ = {}, next_try_ = {};
};

}  // namespace cwt
