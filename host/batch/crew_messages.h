// What goes between the process that feeds a batch and those that rate it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "batch/block.h"
#include "batch/rater.h"

namespace cwt {

struct CrewMessage {
    enum Kind : std::uint32_t {
        kReady,      ///< The session is there; what the partners said.
        kNoSession,  ///< No session can be had; the reason.
        kBrokenRow,  ///< The row that was last told could not be rated; the reason.
        kRate,       ///< A block, with the answers to some of its rows.
        kRated,      ///< The answer.
    };
};

struct Job {
    Block block;
    std::map<std::uint32_t, Answer> known;  ///< By the place in the block.
    bool packed = true;
};

std::string WriteJob(const Job& job);
Job ReadJob(std::string_view bytes);
std::string WriteAnswer(const Answer& answer);
Answer ReadAnswer(std::string_view bytes);

}  // namespace cwt
