#include "frame/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

#include "frame/text.h"

namespace hundredweight {
namespace {

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

NumberText PadLeft(std::string_view text, int width, char padding) {
    const auto wanted = static_cast<std::size_t>(width);
    NumberText padded;
    if (text.size() < wanted) padded.Append(wanted - text.size(), padding);
    return padded.Append(text);
}

/// Pads with '0' between the sign and the digits.
NumberText PadWithZeros(std::string_view text, int width) {
    if (!text.starts_with('-')) return PadLeft(text, width, '0');
    return NumberText("-").Append(PadLeft(text.substr(1), width - 1, '0'));
}

NumberText Fixed(double value, int decimals) {
    std::array<char, 512> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return NumberText({buffer.data(), result.ptr});
}

NumberText Digits(int32_t value) {
    std::array<char, 12> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return NumberText({buffer.data(), result.ptr});
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
    if (result.ec == std::errc::invalid_argument) return 0;
    if (result.ec == std::errc::result_out_of_range) {
        const bool tiny = std::find(number.data(), result.ptr, '-') != result.ptr;
        value = tiny ? 0 : std::numeric_limits<double>::max();
    }
    return negative ? -value : value;
}

float ReadSingle(std::string_view text) {
    constexpr double kHighest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(ReadDecimal(text), -kHighest, kHighest));
}

int32_t TruncateToInteger(double value) {
    using Limits = std::numeric_limits<int32_t>;
    if (std::isnan(value)) return 0;
    if (value <= Limits::min()) return Limits::min();
    if (value >= Limits::max()) return Limits::max();
    return static_cast<int32_t>(value);
}

NumberText FormatDecimal(double value, int width, int decimals) {
    return PadLeft(Fixed(value, decimals), width, ' ');
}

NumberText FormatZeroPadded(double value, int width, int decimals) {
    const NumberText text = Fixed(value, decimals);
    return std::isfinite(value) ? PadWithZeros(text, width) : PadLeft(text, width, ' ');
}

NumberText FormatInteger(int32_t value, int width) {
    return PadLeft(Digits(value), width, ' ');
}

NumberText FormatZeroPadded(int32_t value, int width) {
    return PadWithZeros(Digits(value), width);
}

NumberText FormatNonZero(int32_t value, int width) {
    return PadLeft(value == 0 ? NumberText() : Digits(value), width, ' ');
}

NumberText ZeroPadText(std::string_view text, int width) {
    return PadLeft(text, width, '0');
}

}  // namespace hundredweight
