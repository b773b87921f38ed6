// Codes of a few characters, which compare as one number.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>

namespace hundredweight::reference {

class ShortText {
 public:
    static constexpr std::size_t kMost = 7;

    ShortText() = default;
    /// The text must not be longer than kMost.
    explicit ShortText(std::string_view text) : length_(static_cast<char>(text.size())) {
        std::ranges::copy(text, characters_);
    }

    std::string_view View() const { return {characters_, static_cast<std::size_t>(length_)}; }
    /// Different for different texts.
    std::uint64_t Key() const { return std::bit_cast<std::uint64_t>(*this); }
    bool operator==(const ShortText& other) const { return Key() == other.Key(); }

 private:
    char characters_[kMost] = {};
    char length_ = 0;
};

}  // namespace hundredweight::reference
