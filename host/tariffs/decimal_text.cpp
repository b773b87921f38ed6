#include "tariffs/decimal_text.h"

#include <algorithm>
#include <charconv>

namespace cwt {

bool IsDecimal(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    const std::size_t digits =
        text.size() - static_cast<std::size_t>(std::ranges::count(text, '.'));
    return digits > 0 && text.size() - digits <= 1 &&
           text.find_first_not_of("0123456789.") == text.npos;
}

std::string WithPointMoved(std::string_view text, int digits) {
    const std::string sign(text.starts_with('-') ? "-" : "");
    text.remove_prefix(sign.size());
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string whole(text.substr(0, point));
    std::string part(point < text.size() ? text.substr(point + 1) : "");
    for (; digits > 0; --digits) {
        whole += part.empty() ? '0' : part[0];
        if (!part.empty()) part.erase(0, 1);
    }
    for (; digits < 0; ++digits) {
        part.insert(part.begin(), whole.empty() ? '0' : whole.back());
        if (!whole.empty()) whole.pop_back();
    }
    whole.erase(0, whole.find_first_not_of('0'));
    part.erase(part.find_last_not_of('0') + 1);
    return sign + (whole.empty() ? "0" : whole) + (part.empty() ? "" : "." + part);
}

std::string FloatText(float number) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed).ptr;
    return {text, end};
}

std::string DollarsText(float number, int point_moved) {
    std::string text = WithPointMoved(FloatText(number), point_moved);
    const std::size_t point = text.find('.');
    if (point == text.npos) return text + ".00";
    return text.size() - point < 3 ? text + '0' : text;
}

}  // namespace cwt
