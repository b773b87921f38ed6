// Texts in the fixed-width fields of the record.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace cwt {

/// The text of a field without the blanks around it.
std::string TextOf(const char* field, std::size_t size);

template <std::size_t Size>
std::string TextOf(const char (&field)[Size]) {
    return TextOf(field, Size);
}

/// Refuses a text that `room` bytes do not hold.
void RequireRoom(std::string_view what, std::string_view text, std::size_t room);

/// Puts a terminated text into a zeroed field; `what` names it in the complaint about a longer one.
template <std::size_t Size>
void SetText(char (&field)[Size], std::string_view what, std::string_view text) {
    RequireRoom(what, text, Size - 1);
    std::memset(field, 0, Size);
    std::memcpy(field, text.data(), text.size());
}

}  // namespace cwt
