// Short texts that need no heap, so that building one cannot fail.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace hundredweight {

/// A terminated text of at most Capacity characters; what does not fit is cut.
template <std::size_t Capacity>
class InlineText {
 public:
    InlineText() { SetSize(0); }
    InlineText(std::string_view text) : InlineText() {
        Append(text);
    }  // NOLINT: a text by another name
    InlineText(const InlineText& other) { *this = other; }
    /// Copies what the text holds and no more: most texts are much shorter than their room.
    InlineText& operator=(const InlineText& other) {
        if (this == &other) return *this;
        std::memcpy(characters_, other.characters_, other.size_ + 1);
        size_ = other.size_;
        return *this;
    }

    InlineText& Append(std::string_view text) {
        const std::size_t added = std::min(text.size(), Capacity - size_);
        std::memcpy(characters_ + size_, text.data(), added);
        return SetSize(size_ + added);
    }

    InlineText& Append(std::size_t count, char character) {
        const std::size_t added = std::min(count, Capacity - size_);
        std::memset(characters_ + size_, character, added);
        return SetSize(size_ + added);
    }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const char* c_str() const { return characters_; }
    char& front() { return characters_[0]; }
    operator std::string_view() const { return {characters_, size_}; }  // NOLINT: see above

 private:
    InlineText& SetSize(std::size_t size) {
        size_ = size;
        characters_[size_] = '\0';
        return *this;
    }

    std::size_t size_;
    char characters_[Capacity + 1];
};

}  // namespace hundredweight
