// Numbers printed as decimal text.
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "frame/numbers.h"

namespace hundredweight {
namespace {

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

}  // namespace

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
