// Amounts are printed and read by integer arithmetic where it is exact; what comes out is what the
// standard library makes of them.
#include "frame/numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace hundredweight {
namespace {

constexpr int kCases = 200000;

std::string AsPrinted(double value, int decimals) {
    char buffer[400];
    return {buffer,
            std::to_chars(buffer, std::end(buffer), value, std::chars_format::fixed, decimals).ptr};
}

std::string PaddedLeft(const std::string& text, int width, char padding) {
    const int missing = std::max(width - static_cast<int>(text.size()), 0);
    return std::string(static_cast<std::size_t>(missing), padding) + text;
}

/// Zeros between the sign and the digits; none before what is no number.
std::string PaddedWithZeros(double value, const std::string& text, int width) {
    if (!std::isfinite(value)) return PaddedLeft(text, width, ' ');
    if (!std::signbit(value)) return PaddedLeft(text, width, '0');
    return "-" + PaddedLeft(text.substr(1), width - 1, '0');
}

/// Of no more digits and no higher exponent than a double has.
double Read(std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

class NumbersTest : public ::testing::Test {
 protected:
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }

    /// Amounts, halves of the last decimal, their neighbours, and any doubles at all.
    double AnyNumber() {
        constexpr double kLimits[] = {0x1p53,   0x1p52, 1e15,
                                      0.0,      0.5,    1e22,
                                      INFINITY, NAN,    std::numeric_limits<double>::denorm_min(),
                                      0x1p-10,  0x1p-11};
        const auto digits = static_cast<double>(random_() >> (10 + Below(54)));
        double value = digits;
        switch (Below(6)) {
            case 0:
                value = digits / 100;
                break;
            case 1:
                value = static_cast<float>(digits / 1000);
                break;
            case 2:
                value = std::ldexp(digits, -static_cast<int>(Below(60)));
                break;
            case 3:
                value = std::ldexp(static_cast<double>(Below(100000)), -static_cast<int>(Below(8)));
                break;
            case 4:
                value = std::bit_cast<double>(random_());
                break;
            default:
                value = kLimits[Below(std::size(kLimits))];
        }
        if (Below(3) == 0) value = std::nextafter(value, Below(2) == 0 ? INFINITY : -INFINITY);
        return Below(2) == 0 ? value : -value;
    }

    /// Digits with a point somewhere, perhaps an exponent, and something behind them.
    std::string AnyText() {
        std::string text;
        const std::size_t digits = Below(Below(4) == 0 ? 40 : 18);
        for (std::size_t i = 0; i < digits; ++i) {
            text += static_cast<char>('0' + (Below(3) == 0 ? 0 : Below(10)));
        }
        if (Below(4) != 0) text.insert(Below(text.size() + 1), 1, '.');
        if (Below(8) == 0) text.insert(Below(text.size() + 1), 1, '.');
        if (Below(6) == 0) text += (Below(2) == 0 ? "e" : "E-") + std::to_string(Below(250));
        if (Below(4) == 0) text += " x,+e"[Below(5)];
        return text;
    }

    std::mt19937_64 random_{1};
};

TEST_F(NumbersTest, ArePrintedAsTheStandardLibraryPrintsThem) {
    for (int i = 0; i < kCases; ++i) {
        const double value = AnyNumber();
        const auto decimals = static_cast<int>(Below(5));
        const auto width = static_cast<int>(Below(40));
        const std::string text = AsPrinted(value, decimals);
        ASSERT_EQ(std::string_view(FormatDecimal(value, width, decimals)),
                  PaddedLeft(text, width, ' '))
            << std::hexfloat << value;
        ASSERT_EQ(std::string_view(FormatZeroPadded(value, width, decimals)),
                  PaddedWithZeros(value, text, width))
            << std::hexfloat << value;
    }
}

TEST_F(NumbersTest, AreReadAsTheStandardLibraryReadsThem) {
    for (int i = 0; i < kCases; ++i) {
        const std::string text = AnyText();
        const bool is_number = !text.empty() && std::strchr(".0123456789", text[0]) != nullptr;
        const double value = is_number ? Read(text) : 0;
        for (const bool negative : {false, true}) {
            const double read =
                ReadDecimal(std::string(Below(4), ' ') + (negative ? "-" : "") + text);
            ASSERT_EQ(read, negative ? -value : value) << text;
        }
    }
}

TEST_F(NumbersTest, OfThirtyTwoBitsArePrintedWhole) {
    for (int i = 0; i < kCases / 10; ++i) {
        const auto value = static_cast<int32_t>(random_() >> (32 + Below(32)));
        for (const int32_t number : {value, -1 - value}) {
            const std::string text = std::to_string(number);
            const auto width = static_cast<int>(Below(14));
            ASSERT_EQ(std::string_view(FormatInteger(number, width)), PaddedLeft(text, width, ' '));
            ASSERT_EQ(std::string_view(FormatZeroPadded(number, width)),
                      PaddedWithZeros(number, text, width));
        }
    }
}

}  // namespace
}  // namespace hundredweight
