#include "frame/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>

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

constexpr int kMostDecimals = 3;
constexpr double kFractionless = 4503599627370496.0;  ///< 2^52: from here on doubles are whole.

/// A double as it is stored: its value is mantissa / 2^shift when it is below 2^53, and the shift
/// is at least 1 when it is below 2^52.
struct StoredDouble {
    explicit StoredDouble(double value) {
        constexpr int kMantissaBits = 52, kLowestShift = 1074;
        const auto bits = std::bit_cast<uint64_t>(value);
        const auto exponent = static_cast<int>(bits >> kMantissaBits & 0x7FF);
        mantissa = bits & ((uint64_t{1} << kMantissaBits) - 1);
        if (exponent != 0) mantissa |= uint64_t{1} << kMantissaBits;
        shift = kLowestShift - std::max(exponent - 1, 0);
    }

    uint64_t mantissa;  ///< Below 2^53.
    int shift;
};

/// Whether RoundToUnits has an answer: for every amount of money; not for infinity and no number.
bool HasUnits(double amount, int decimals) {
    return decimals <= kMostDecimals && std::abs(amount) < kFractionless;
}

/// The amount without its sign in units of its last decimal, rounded to the nearest, halves to the
/// even one. Exact, since a mantissa times 1000 has 63 bits at most.
uint64_t RoundToUnits(double amount, int decimals) {
    constexpr uint64_t kPowersOfTen[kMostDecimals + 1] = {1, 10, 100, 1000};
    const StoredDouble stored(amount);
    if (stored.shift >= 64) return 0;  // Less than half a unit.
    const uint64_t product = stored.mantissa * kPowersOfTen[decimals];
    const uint64_t half = uint64_t{1} << (stored.shift - 1);
    const uint64_t units = product >> stored.shift;
    const uint64_t rest = product & (2 * half - 1);
    return units + (rest > half || (rest == half && units % 2 != 0) ? 1 : 0);
}

/// A number as text, written from its end to its head.
class Numeral {
 public:
    /// A number of units, of which 10^decimals make one.
    Numeral(bool negative, uint64_t units, int decimals) : negative_(negative) {
        for (int digits = 0; digits < decimals; ++digits) PutLastDigit(units);
        if (decimals > 0) Put('.');
        do PutLastDigit(units);
        while (units != 0);
    }
    explicit Numeral(int32_t value)
        : Numeral(value < 0, static_cast<uint64_t>(std::abs(int64_t{value})), 0) {}
    Numeral(const Numeral&) = delete;
    Numeral& operator=(const Numeral&) = delete;

    NumberText PaddedWithBlanks(int width) {
        if (negative_) Put('-');
        Pad(width, ' ');
        return Text();
    }

    /// Zeros stand between the sign and the digits.
    NumberText PaddedWithZeros(int width) {
        Pad(negative_ ? width - 1 : width, '0');
        if (negative_) Put('-');
        return Text();
    }

 private:
    static constexpr int kWidest = 320;
    static constexpr int kAtOnce = 16;

    void Put(char character) { *--begin_ = character; }
    void PutLastDigit(uint64_t& number) {
        Put(static_cast<char>('0' + number % 10));
        number /= 10;
    }
    void Pad(int width, char padding) {
        char* const wanted = buffer_ + sizeof buffer_ - std::min(width, kWidest);
        while (begin_ > wanted) {
            // As many as the processor puts at once, though fewer may be wanted.
            std::memset(begin_ - kAtOnce, padding, kAtOnce);
            begin_ = std::max(begin_ - kAtOnce, wanted);
        }
    }
    const char* End() const { return buffer_ + sizeof buffer_; }
    NumberText Text() const { return NumberText({begin_, End()}); }

    bool negative_;
    char buffer_[kAtOnce + kWidest + 1];
    char* begin_ = buffer_ + sizeof buffer_;
};

Numeral NumeralOf(double value, int decimals) {
    return {std::signbit(value), RoundToUnits(value, decimals), decimals};
}

NumberText PadLeft(std::string_view text, int width, char padding) {
    const auto wanted = static_cast<std::size_t>(std::max(width, 0));
    NumberText padded;
    if (text.size() < wanted) padded.Append(wanted - text.size(), padding);
    return padded.Append(text);
}

/// Pads with '0' between the sign and the digits.
NumberText PadWithZeros(std::string_view text, int width) {
    if (!text.starts_with('-')) return PadLeft(text, width, '0');
    return NumberText("-").Append(PadLeft(text.substr(1), width - 1, '0'));
}

/// printf's "%.<decimals>f" of any number.
NumberText Fixed(double value, int decimals) {
    std::array<char, 512> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return NumberText({buffer.data(), result.ptr});
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

NumberText FormatDecimal(double value, int width, int decimals) {
    if (!HasUnits(value, decimals)) return PadLeft(Fixed(value, decimals), width, ' ');
    return NumeralOf(value, decimals).PaddedWithBlanks(width);
}

NumberText FormatZeroPadded(double value, int width, int decimals) {
    if (HasUnits(value, decimals)) return NumeralOf(value, decimals).PaddedWithZeros(width);
    const NumberText text = Fixed(value, decimals);
    return std::isfinite(value) ? PadWithZeros(text, width) : PadLeft(text, width, ' ');
}

NumberText FormatInteger(int32_t value, int width) {
    return Numeral(value).PaddedWithBlanks(width);
}

NumberText FormatZeroPadded(int32_t value, int width) {
    return Numeral(value).PaddedWithZeros(width);
}

NumberText FormatNonZero(int32_t value, int width) {
    return value == 0 ? PadLeft("", width, ' ') : FormatInteger(value, width);
}

NumberText ZeroPadText(std::string_view text, int width) {
    return PadLeft(text, width, '0');
}

}  // namespace hundredweight
