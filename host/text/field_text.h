// Texts in the fixed-width fields of the record.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace cwt {

/// The text of a field without the blanks around it, in UTF-8.
std::string TextOf(const char* field, std::size_t size);

template <std::size_t Size>
std::string TextOf(const char (&field)[Size]) {
    return TextOf(field, Size);
}

/// Puts bytes and a terminator into a field that is zero behind them. Result: whether they fit.
template <std::size_t Size>
bool SetBytes(char (&field)[Size], std::string_view bytes) {
    if (bytes.size() >= Size) return false;
    std::memset(field, 0, Size);
    std::memcpy(field, bytes.data(), bytes.size());
    return true;
}

}  // namespace cwt
