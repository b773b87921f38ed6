// Fields of binary records: texts padded with blanks, little-endian numbers.
#pragma once

#include <string>
#include <string_view>

namespace hundredweight::samples {

inline std::string Padded(std::string_view text, std::size_t width) {
    std::string field(text.substr(0, width));
    field.resize(width, ' ');
    return field;
}

template <typename Number>
std::string Bytes(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

}  // namespace hundredweight::samples
