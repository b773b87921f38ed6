#include "server/http/body_frame.h"

#include <algorithm>

namespace cwt {

BodyFrame::BodyFrame(bool is_chunked, std::size_t length, std::size_t longest)
    : rest_(is_chunked ? 0 : length), left_(longest) {
    if (is_chunked) {
        state_ = State::kSize;
    } else if (length > 0) {
        state_ = State::kLength;
    }
}

std::size_t BodyFrame::Pass(std::string_view bytes) {
    std::size_t passed = 0;
    while (passed < bytes.size() && !is_whole() && !is_broken()) {
        if (state_ != State::kLength && state_ != State::kChunk) {
            PassFrame(bytes[passed++]);
            continue;
        }
        const std::size_t count = std::min(rest_, bytes.size() - passed);
        passed += count;
        rest_ -= count;
        if (rest_ > 0) break;
        state_ = state_ == State::kLength ? State::kWhole : State::kChunkReturn;
    }
    return passed;
}

void BodyFrame::PassFrame(char c) {
    const auto expect = [&](char wanted, State next) {
        state_ = c == wanted ? next : State::kBroken;
    };
    switch (state_) {
        case State::kSize:
            if (c == '\r' && digits_ > 0) {
                state_ = State::kSizeEnd;
            } else {
                AddDigit(c);
            }
            break;
        case State::kSizeEnd:
            expect('\n', rest_ == 0 ? State::kLastReturn : State::kChunk);
            break;
        case State::kChunkReturn:
            expect('\r', State::kChunkEnd);
            break;
        case State::kChunkEnd:
            digits_ = 0;
            expect('\n', State::kSize);
            break;
        case State::kLastReturn:
            expect('\r', State::kLastEnd);
            break;
        default:
            expect('\n', State::kWhole);
    }
    if (state_ == State::kChunk) left_ -= rest_;
}

void BodyFrame::AddDigit(char c) {
    constexpr std::size_t kBase = 16;
    constexpr int kMostDigits = 8;
    constexpr std::string_view kDigits = "0123456789abcdef";
    const char small = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t digit = kDigits.find(small);
    rest_ = rest_ * kBase + digit;
    is_too_large_ = digit < kBase && rest_ > left_;
    if (digit >= kBase || ++digits_ > kMostDigits || is_too_large_) state_ = State::kBroken;
}

}  // namespace cwt
