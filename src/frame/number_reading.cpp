// Numbers read from decimal text.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <optional>

#include "frame/numbers.h"
#include "frame/text.h"

namespace hundredweight {
namespace {

/// What follows the white space and the sign at the head of a text.
struct SignedText {
    bool negative = false;
    std::string_view rest;
};

SignedText SkipSign(std::string_view text) {
    while (!text.empty() && IsWhiteSpace(text.front())) text.remove_prefix(1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    return {negative, text};
}

/// A number of few digits and no exponent, such as every amount is. Both its digits and the power
/// of ten that they are divided by are exact in double precision, so that the division alone
/// rounds.
std::optional<double> ReadPlainDecimal(std::string_view text) {
    constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* at = text.data();
    const char* const end = at + text.size();
    uint64_t digits = 0;  // Of a text that is too long it does not matter which.
    const auto read_digits = [&] {
        const char* const begin = at;
        for (; at != end && IsDigit(*at); ++at) {
            digits = digits * 10 + static_cast<uint64_t>(*at - '0');
        }
        return static_cast<std::size_t>(at - begin);
    };
    const std::size_t whole = read_digits();
    std::size_t decimals = 0;
    if (at != end && *at == '.') {
        ++at;
        decimals = read_digits();
    }
    const std::size_t count = whole + decimals;
    const bool has_exponent = at != end && (*at == 'e' || *at == 'E');
    if (count == 0 || count >= std::size(kPowersOfTen) || has_exponent) return std::nullopt;
    return static_cast<double>(static_cast<int64_t>(digits)) / kPowersOfTen[decimals];
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
    const std::optional<double> plain = ReadPlainDecimal(number);
    if (plain) return negative ? -*plain : *plain;
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

}  // namespace hundredweight
