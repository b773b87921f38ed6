// Bytes that no rule reads, as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cwt {

/// What a text of bytes in hexadecimal begins with.
inline constexpr std::string_view kHex = "hex:";
std::string HexOf(std::string_view bytes);
/// The bytes of digits, which pair; nothing for others.
std::optional<std::string> BytesOfHex(std::string_view digits);

/// Any bytes as a text that BytesOfText takes back for a text field of their size, or without one.
std::string CarriedText(std::string_view bytes);
std::optional<std::string> CarriedBytes(std::string_view text);

}  // namespace cwt
