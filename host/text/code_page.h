// The characters of the data. Tariff sets come from systems whose texts are in the ANSI code page
// of Western Europe, Windows-1252; people and JSON have UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cwt {

/// The text of the data in UTF-8. What has no character becomes U+FFFD, and control characters
/// their pictures (U+2400 on), so that no text of a file acts on a terminal.
std::string FromCodePage(std::string_view text);

/// A text of UTF-8 as the data hold it; nothing when they have no such character, or it is a
/// control character, which would end or tear the field.
std::optional<std::string> ToCodePage(std::string_view text);

bool IsUtf8(std::string_view text);

/// A text of people's own, in which what is no UTF-8 and control characters are replaced alike.
std::string Printable(std::string_view text);

}  // namespace cwt
