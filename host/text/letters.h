// Letters of ASCII, whose case protocols and slips of the pen do not tell.
#pragma once

#include <string>
#include <string_view>

namespace cwt {

inline std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

}  // namespace cwt
