#include "frame/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

namespace hundredweight {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// What follows the white space and the sign at the head of a text.
struct SignedText {
    bool negative = false;
    std::string_view rest;
};

SignedText SkipSign(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    return {negative, text};
}

std::string PadLeft(std::string text, int width, char padding) {
    const auto wanted = static_cast<std::size_t>(width);
    if (text.size() < wanted) text.insert(0, wanted - text.size(), padding);
    return text;
}

/// Pads with '0' between the sign and the digits.
std::string PadWithZeros(const std::string& text, int width) {
    if (!text.starts_with('-')) return PadLeft(text, width, '0');
    return '-' + PadLeft(text.substr(1), width - 1, '0');
}

std::string Fixed(double value, int decimals) {
    // The longest double has 309 digits before its point.
    std::array<char, 512> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return {buffer.data(), result.ptr};
}

}  // namespace

int32_t ReadInteger(std::string_view text) {
    const auto [negative, digits] = SkipSign(text);
    int64_t value = 0;
    for (const char character : digits) {
        if (!IsDigit(character)) break;
        value = std::min<int64_t>(value * 10 + (character - '0'), int64_t{1} << 31);
    }
    if (negative) value = -value;
    return static_cast<int32_t>(std::min<int64_t>(value, std::numeric_limits<int32_t>::max()));
}

double ReadDecimal(std::string_view text) {
    const auto [negative, number] = SkipSign(text);
    // from_chars would also read a sign of its own and the names of infinity and of no number.
    if (number.empty() || !(IsDigit(number.front()) || number.front() == '.')) return 0;
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        const bool tiny = std::find(number.data(), result.ptr, '-') != result.ptr;
        value = tiny ? 0 : std::numeric_limits<double>::max();
    }
    return negative ? -value : value;
}

int32_t TruncateToInteger(double value) {
    using Limits = std::numeric_limits<int32_t>;
    if (std::isnan(value)) return 0;
    if (value <= Limits::min()) return Limits::min();
    if (value >= Limits::max()) return Limits::max();
    return static_cast<int32_t>(value);
}

std::string FormatDecimal(double value, int width, int decimals) {
    return PadLeft(Fixed(value, decimals), width, ' ');
}

std::string FormatZeroPadded(double value, int width, int decimals) {
    const std::string text = Fixed(value, decimals);
    return std::isfinite(value) ? PadWithZeros(text, width) : PadLeft(text, width, ' ');
}

std::string FormatInteger(int32_t value, int width) {
    return PadLeft(std::to_string(value), width, ' ');
}

std::string FormatZeroPadded(int32_t value, int width) {
    return PadWithZeros(std::to_string(value), width);
}

std::string FormatNonZero(int32_t value, int width) {
    return PadLeft(value == 0 ? "" : std::to_string(value), width, ' ');
}

std::string ZeroPadText(std::string_view text, int width) {
    return PadLeft(std::string(text), width, '0');
}

}  // namespace hundredweight
