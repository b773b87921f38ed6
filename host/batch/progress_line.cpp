#include "batch/progress_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "platform/system.h"

namespace cwt {
namespace {

constexpr std::chrono::milliseconds kOnTerminal(200);
constexpr std::chrono::seconds kElsewhere(10);

/// 1234567 as "1,234,567".
std::string Grouped(std::uint64_t number) {
    std::string text = fmt::to_string(number);
    for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, ",");
    return text;
}

std::string SizeText(std::uint64_t bytes) {
    constexpr double kMega = 1e6;
    return fmt::format("{:.1f} MB", static_cast<double>(bytes) / kMega);
}

std::string TimeText(double seconds) {
    const auto whole = static_cast<std::uint64_t>(seconds);
    if (whole >= 3600)
        return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
    return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

}  // namespace

ProgressLine::ProgressLine(bool shown, std::uint64_t input_size, std::uint64_t rows_before)
    : shown_(shown),
      on_terminal_(IsTerminal(stderr)),
      input_size_(input_size),
      rows_before_(rows_before) {}

ProgressLine::~ProgressLine() {
    if (is_begun_ && on_terminal_) std::fputs("\r\x1B[K", stderr);
}

void ProgressLine::Show(const Tally& tally, std::uint64_t input_bytes) {
    if (!shown_) return;
    if (!is_begun_) bytes_at_begin_ = input_bytes;
    is_begun_ = true;
    const auto now = Clock::now();
    if (now < next_) return;
    next_ = now + (on_terminal_ ? kOnTerminal : kElsewhere);
    const double seconds = std::max(std::chrono::duration<double>(now - begin_).count(), 0.001);
    std::string line = fmt::format("{} rows, {}", Grouped(tally.rows()), SizeText(input_bytes));
    if (input_size_ > 0) {
        line += fmt::format(" of {} ({}%)", SizeText(input_size_),
                            100 * std::min(input_bytes, input_size_) / input_size_);
    }
    const double rows = static_cast<double>(tally.rows() - rows_before_);
    line +=
        fmt::format(", {} rows/s, {} refused", Grouped(static_cast<std::uint64_t>(rows / seconds)),
                    Grouped(tally.refused()));
    if (tally.failed() > 0) line += fmt::format(", {} failed", Grouped(tally.failed()));
    if (input_size_ > input_bytes && input_bytes > bytes_at_begin_) {
        line += ", " +
                TimeText(seconds * static_cast<double>(input_size_ - input_bytes) /
                         static_cast<double>(input_bytes - bytes_at_begin_)) +
                " left";
    }
    std::fputs(on_terminal_ ? ("\r\x1B[K" + line).c_str() : ("cwt: " + line + "\n").c_str(),
               stderr);
    std::fflush(stderr);
}

}  // namespace cwt
