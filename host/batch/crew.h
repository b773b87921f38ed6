// Those who rate a batch's blocks: worker processes with a session each or, where a system has no
// such processes, this one.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "batch/block.h"
#include "batch/rater.h"
#include "files/packing.h"
#include "session/sources.h"

namespace cwt {

class Crew {
 public:
    Crew() = default;
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;
    virtual ~Crew() = default;

    /// Whether somebody will soon have nothing to do.
    virtual bool HasRoom() const = 0;

    virtual void Give(Block block) = 0;

    /// An answer to a block, in no order, its bytes packed; nothing when none has come in a tenth
    /// of a second. Throws Broken when no session can be had, or not one row is answered.
    virtual std::optional<Answer> Take() = 0;

    /// What the partners said at their start; empty when nothing.
    virtual std::string said() const = 0;
};

struct CrewTerms {
    Sources sources;
    RowForms forms;
    Packing packing;
    unsigned jobs;
    std::chrono::seconds timeout;  ///< For one row.
    /// Called when a session has been loaded, at the start or later; may throw.
    std::function<void()> when_loaded;
};

std::unique_ptr<Crew> MakeCrew(const CrewTerms& terms);

}  // namespace cwt
