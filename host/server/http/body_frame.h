// Where the body of a request ends among the bytes of a connection.
#pragma once

#include <cstddef>
#include <string_view>

namespace cwt {

/// Counts the bytes of a body as they pass, in chunks if it comes in such. Chunks have a size in
/// hexadecimal and nothing else beside them.
class BodyFrame {
 public:
    BodyFrame() = default;
    BodyFrame(bool is_chunked, std::size_t length, std::size_t longest);

    /// How many of these bytes belong to the body or its frame. They are passed.
    std::size_t Pass(std::string_view bytes);

    /// Whether the body has passed whole.
    bool is_whole() const { return state_ == State::kWhole; }
    bool is_broken() const { return state_ == State::kBroken; }
    bool is_too_large() const { return is_too_large_; }

 private:
    enum class State {
        kLength,  ///< The bytes of a length that was told.
        kSize,
        kSizeEnd,
        kChunk,
        kChunkReturn,
        kChunkEnd,
        kLastReturn,
        kLastEnd,
        kWhole,
        kBroken,
    };

    void PassFrame(char c);
    void AddDigit(char c);

    State state_ = State::kWhole;
    std::size_t rest_ = 0;  ///< Of the body or the chunk; the chunk's size while that is read.
    std::size_t left_ = 0;  ///< That may still come in chunks.
    int digits_ = 0;
    bool is_too_large_ = false;
};

}  // namespace cwt
