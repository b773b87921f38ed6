// What tests write and compare as texts: tables of words, outcomes, files.
#pragma once

#include <algorithm>
#include <array>
#include <sstream>

#include "support/tariff_fixture.h"

namespace hundredweight {

/// A table of `Columns` words a row; '_' stands for a blank and a lone '.' for an empty text.
template <std::size_t Columns>
std::vector<std::array<std::string, Columns>> Table(const std::string& text) {
    std::vector<std::array<std::string, Columns>> rows;
    std::istringstream words(text);
    for (std::size_t i = 0; words >> std::ws && !words.eof(); i = (i + 1) % Columns) {
        if (i == 0) rows.emplace_back();
        words >> rows.back()[i];
        std::replace(rows.back()[i].begin(), rows.back()[i].end(), '_', ' ');
        if (rows.back()[i] == ".") rows.back()[i].clear();
    }
    return rows;
}

/// A call's result and the code that it left, "0:125"; clears the code for the next call.
inline std::string Told(RateContext& context, int32_t result) {
    const int32_t code = context.ErrorCode;
    context.ErrorCode = 0;
    return std::to_string(result) + ':' + std::to_string(code);
}

/// Values beside each other, with colons between: "1:0:12.5".
template <class First, class... Others>
std::string Joined(First first, Others... others) {
    std::ostringstream text;
    text << first;
    ((text << ':' << others), ...);
    return text.str();
}

/// Bytes with dots for zeros.
inline std::string Dotted(std::string bytes) {
    std::replace(bytes.begin(), bytes.end(), '\0', '.');
    return bytes;
}

/// Whether a word of letters, each of which switches something on, has this one.
inline bool Has(const std::string& letters, char letter) {
    return letters.find(letter) != letters.npos;
}

inline std::string FileContent(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace hundredweight
