// A text in lines of a limited width.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace cwt {

/// Breaks a paragraph between words. All lines but the first are indented.
inline std::string Wrapped(std::string_view text, std::size_t line_width, std::size_t indent = 0) {
    std::string lines;
    std::size_t width = indent;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (width + word.size() > line_width && width > indent) {
            lines.back() = '\n';
            lines.append(indent, ' ');
            width = indent;
        }
        lines.append(word).append(1, ' ');
        width += word.size() + 1;
    }
    if (!lines.empty()) lines.back() = '\n';
    return lines;
}

}  // namespace cwt
