#include <fmt/core.h>

#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "tariffs/carried_text.h"
#include "tariffs/decimal_text.h"
#include "tariffs/field.h"
#include "text/code_page.h"

namespace cwt {
namespace {

/// A text with the zeros that a spreadsheet has taken for those of a number.
std::string WithZeros(const Field& field, std::string_view text) {
    constexpr std::size_t kZipDigits = 5;
    if (text.empty() || text.find_first_not_of("0123456789") != text.npos) return std::string(text);
    std::size_t zeros = 0;
    if (field.kind == Kind::kPostal && text.size() + 1 == kZipDigits) zeros = 1;
    if (field.kind == Kind::kCode && text.size() < field.width) zeros = field.width - text.size();
    return std::string(zeros, '0').append(text);
}

template <class Number>
std::string BytesOf(Number number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

/// Whether a spreadsheet has made another text of a code: a number with an exponent, 1.00E+05, or
/// digits behind the apostrophe that keeps their zeros.
bool IsSpreadsheets(std::string_view text) {
    if (text.starts_with('\'')) return IsDigits(text.substr(1));
    const std::size_t exponent = text.find_first_of("Ee");
    if (exponent == text.npos || !IsDecimal(text.substr(0, exponent))) return false;
    const std::string_view power = text.substr(exponent + 1);
    return (power.starts_with('+') || power.starts_with('-')) && IsDigits(power.substr(1));
}

constexpr const char* kNoDecimal =
    "is no decimal number such as 1205.50: without signs of money, commas and exponents";

FieldBytes BytesOfFloat(std::string_view written, int point_moved) {
    if (!IsDecimal(written)) return {{}, kNoDecimal};
    const std::string decimal = WithPointMoved(written, point_moved);
    float number = 0;
    const auto [end, error] =
        std::from_chars(decimal.data(), decimal.data() + decimal.size(), number);
    if (error != std::errc() || end != decimal.data() + decimal.size()) {
        return {{}, "is too large, or too near to zero, for its field"};
    }
    const std::string kept = FloatText(number);
    if (WithPointMoved(kept, 0) == WithPointMoved(decimal, 0)) return {BytesOf(number), {}};
    return {BytesOf(number), "is kept as " + WithPointMoved(kept, -point_moved) +
                                 ", the nearest number that its field holds"};
}

template <class Number>
FieldBytes BytesOfWhole(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size()) return {BytesOf(number), {}};
    return {{},
            fmt::format("is no whole number from {} to {}", std::numeric_limits<Number>::min(),
                        std::numeric_limits<Number>::max())};
}

FieldBytes BytesOfCharacters(const Field& field, std::string_view text) {
    if (!IsUtf8(text)) return {{}, "is not in UTF-8"};
    if (IsSpreadsheets(text)) return {{}, "is what a spreadsheet has made of a code"};
    std::optional<std::string> bytes = ToCodePage(text);
    if (!bytes) return {{}, "has a character that the data cannot hold (they have Windows-1252)"};
    if (bytes->size() > field.width) {
        return {{}, fmt::format("has {} characters, and {} have room", bytes->size(), field.width)};
    }
    const std::size_t missing = field.width - bytes->size();
    if (field.kind == Kind::kRight) {
        bytes->insert(0, missing, ' ');
    } else {
        bytes->append(missing, PaddingOf(field));
    }
    return {bytes, {}};
}

/// Numbers are texts that stand at the right of their fields, or, from other systems, anywhere.
FieldBytes BytesOfRight(const Field& field, std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    if (!IsDecimal(WithoutPadding(text.substr(first), ' '))) return {{}, kNoDecimal};
    return BytesOfCharacters(field, text);
}

FieldBytes BytesOfDate(std::string_view text) {
    const bool has_form = text.size() == 10 && text[4] == '-' && text[7] == '-' &&
                          IsDigits(text.substr(0, 4)) && IsDigits(text.substr(5, 2)) &&
                          IsDigits(text.substr(8));
    if (!has_form) return {{}, "is no date such as 2025-01-06"};
    const auto number = [&](std::size_t at, std::size_t size) {
        unsigned value = 0;
        std::from_chars(&text[at], &text[at] + size, value);
        return value;
    };
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(number(0, 4))),
                                           std::chrono::month(number(5, 2)),
                                           std::chrono::day(number(8, 2)));
    if (!date.ok()) return {{}, "is no day of the calendar"};
    return {std::string(text.substr(0, 4)).append(text.substr(5, 2)).append(text.substr(8)), {}};
}

}  // namespace

FieldBytes BytesOfText(const Field& field, std::string_view text) {
    if (text.starts_with(kHex)) {
        std::optional<std::string> bytes = BytesOfHex(text.substr(kHex.size()));
        if (!bytes) return {{}, "has no pairs of hexadecimal digits behind \"hex:\""};
        if (bytes->size() > field.width) {
            return {{}, fmt::format("has {} bytes, and {} have room", bytes->size(), field.width)};
        }
        bytes->resize(field.width, PaddingOf(field));
        return {bytes, {}};
    }
    if (text.empty()) {
        if (!field.is_needed) return {BytesOfNothing(field), {}};
        if (!IsText(field.kind)) return {{}, "is empty"};
    }
    switch (field.kind) {
        case Kind::kText:
            return BytesOfCharacters(field, text);
        case Kind::kRight:
            return BytesOfRight(field, text);
        case Kind::kPostal:
        case Kind::kCode: {
            const std::string whole = WithZeros(field, text);
            FieldBytes given = BytesOfCharacters(field, whole);
            if (whole != text) given.problem = "is taken for " + whole + ": zeros were dropped";
            return given;
        }
        case Kind::kFlag:
            if (text == "yes") return {"Y", {}};
            if (text == "no") return {"N", {}};
            if (text == "Y" || text == "N") return {std::string(text), {}};
            if (ToCodePage(text).value_or("  ").size() != 1) return {{}, "is neither yes nor no"};
            return BytesOfCharacters(field, text);
        case Kind::kInt:
            return field.width == 2 ? BytesOfWhole<std::int16_t>(text)
                                    : BytesOfWhole<std::int32_t>(text);
        case Kind::kUnsigned:
            return field.width == 2 ? BytesOfWhole<std::uint16_t>(text)
                                    : BytesOfWhole<std::uint32_t>(text);
        case Kind::kFloat:
        case Kind::kDollars:
            return BytesOfFloat(text, 0);
        case Kind::kCents:
            return BytesOfFloat(text, 2);
        case Kind::kDate:
            return BytesOfDate(text);
    }
    return {};
}

}  // namespace cwt
