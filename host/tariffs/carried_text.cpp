#include "tariffs/carried_text.h"

#include <fmt/core.h>

#include <charconv>

#include "text/code_page.h"

namespace cwt {

std::string HexOf(std::string_view bytes) {
    std::string text(kHex);
    for (const char byte : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return text;
}

std::optional<std::string> BytesOfHex(std::string_view digits) {
    if (digits.size() % 2 != 0) return std::nullopt;
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(&digits[i], &digits[i] + 2, value, 16);
        if (error != std::errc() || end != &digits[i] + 2) return std::nullopt;
        bytes += static_cast<char>(value);
    }
    return bytes;
}

std::string CarriedText(std::string_view bytes) {
    // Blanks at an end would be lost on the way through an editor.
    const bool is_open = bytes.starts_with(' ') || bytes.ends_with(' ');
    std::string text = FromCodePage(bytes);
    return !is_open && !text.starts_with(kHex) && ToCodePage(text) == bytes ? text : HexOf(bytes);
}

std::optional<std::string> CarriedBytes(std::string_view text) {
    if (text.starts_with(kHex)) return BytesOfHex(text.substr(kHex.size()));
    return IsUtf8(text) ? ToCodePage(text) : std::nullopt;
}

}  // namespace cwt
