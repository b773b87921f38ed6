// Tells people how far a batch is.
#pragma once

#include <chrono>
#include <cstdint>

#include "batch/tally.h"

namespace cwt {

/// On a terminal a line that is written anew, elsewhere a line now and then, on standard error.
class ProgressLine {
 public:
    /// `input_size`: bytes of the input; 0 when nobody knows. `rows_before`: those of an earlier
    /// run.
    ProgressLine(bool shown, std::uint64_t input_size, std::uint64_t rows_before);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Show(const Tally& tally, std::uint64_t input_bytes);

 private:
    using Clock = std::chrono::steady_clock;

    const bool shown_, on_terminal_;
    const std::uint64_t input_size_, rows_before_;
    const Clock::time_point begin_ = Clock::now();
    Clock::time_point next_ = begin_;
    std::uint64_t bytes_at_begin_ = 0;
    bool is_begun_ = false;
};

}  // namespace cwt
