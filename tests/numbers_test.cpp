#include "frame/numbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

namespace hundredweight {

void ExpectDecimalNumbers() {
    const std::tuple<const char*, int32_t, double> rows[] = {
        {"", 0, 0},           {" \t+12.5abc", 12, 12.5},
        {"-7.25", -7, -7.25}, {".5", 0, .5},
        {"5.", 5, 5},         {"-.5", 0, -.5},
        {".", 0, 0},          {"- 1", 0, 0},
        {"+-1", 0, 0},        {"1,5", 1, 1},
        {"1e3", 1, 1000},     {"1e", 1, 1},
        {"0x10", 0, 0},       {"inf", 0, 0},
        {"nan", 0, 0},        {"2E-1x", 2, .2}};
    for (const auto& [text, integer, decimal] : rows) {
        EXPECT_EQ(ReadInteger(text), integer) << text;
        EXPECT_EQ(ReadDecimal(text), decimal) << text;
    }
    const std::pair<NumberText, const char*> texts[] = {
        {FormatDecimal(1234.5, 9, 2), "  1234.50"}, {FormatDecimal(0.125, 5, 2), " 0.12"},
        {FormatDecimal(12345, 5, 2), "12345.00"},   {FormatZeroPadded(-4.5, 7, 2), "-004.50"},
        {FormatInteger(-12, 5), "  -12"},           {FormatZeroPadded(-5, 6), "-00005"},
        {FormatNonZero(-42, 6), "   -42"},          {ZeroPadText("1234567", 6), "1234567"}};
    for (const auto& [printed, expected] : texts) EXPECT_STREQ(printed.c_str(), expected);
}

TEST(Numbers, AreDecimalTextWhateverTheHostsLocale) {
    ExpectDecimalNumbers();
    const char* locale = nullptr;
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German"})
        if (locale == nullptr) locale = std::setlocale(LC_ALL, name);
    if (locale == nullptr) GTEST_SKIP() << "no locale with a decimal comma here";
    ExpectDecimalNumbers();
    std::setlocale(LC_ALL, "C");
}

TEST(Numbers, EndAtTheirOwnCharactersAndBounds) {
    EXPECT_EQ(ReadInteger(std::string_view("123456", 3)), 123);
    EXPECT_EQ(ReadDecimal(std::string_view("12.345", 4)), 12.3);
    EXPECT_EQ(ReadInteger("99999999999"), INT32_MAX);
    EXPECT_EQ(ReadInteger("-99999999999999999999999"), INT32_MIN);
    for (const auto& [value, truncated] : {std::pair{-2.99, -2}, {3e9, INT32_MAX}, {NAN, 0}})
        EXPECT_EQ(TruncateToInteger(value), truncated);
}

}  // namespace hundredweight
