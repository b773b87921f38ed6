#include "tariffs/field.h"

#include <fmt/core.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "tariffs/decimal_text.h"
#include "text/code_page.h"

namespace cwt {
namespace {

std::optional<std::string> BytesOfHex(std::string_view digits) {
    if (digits.size() % 2 != 0) return std::nullopt;
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(&digits[i], &digits[i] + 2, value, 16);
        if (error != std::errc() || end != &digits[i] + 2) return std::nullopt;
        bytes += static_cast<char>(value);
    }
    return bytes;
}

char Padding(const Field& field) {
    if (IsText(field.kind)) return field.padding;
    return field.kind == Kind::kFlag || field.kind == Kind::kDate ? ' ' : '\0';
}

/// A text with the zeros that a spreadsheet has taken for those of a number.
std::string WithZeros(const Field& field, std::string_view text) {
    constexpr std::size_t kZipDigits = 5;
    if (text.empty() || text.find_first_not_of("0123456789") != text.npos) return std::string(text);
    std::size_t zeros = 0;
    if (field.kind == Kind::kPostal && text.size() + 1 == kZipDigits) zeros = 1;
    if (field.kind == Kind::kCode && text.size() < field.width) zeros = field.width - text.size();
    return std::string(zeros, '0').append(text);
}

std::string_view WithoutPadding(std::string_view bytes, char padding) {
    const std::size_t last = bytes.find_last_not_of(padding);
    return bytes.substr(0, last == bytes.npos ? 0 : last + 1);
}

template <class Number>
std::string BytesOf(Number number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

template <class Number>
Number NumberOf(std::string_view bytes) {
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
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
        bytes->append(missing, Padding(field));
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

/// The text of bytes that keep the field's rule; what it gives for others does not come back.
std::string RuleText(const Field& field, std::string_view bytes) {
    switch (field.kind) {
        case Kind::kText:
        case Kind::kPostal:
        case Kind::kCode:
            return FromCodePage(WithoutPadding(bytes, field.padding));
        case Kind::kRight: {
            const std::size_t start = std::min(bytes.find_first_not_of(' '), bytes.size());
            // What is not aligned to the right is told by its padding.
            return FromCodePage(bytes.ends_with(' ') && start < bytes.size() ? bytes
                                                                             : bytes.substr(start));
        }
        case Kind::kFlag:
            if (bytes == "Y") return "yes";
            if (bytes == "N") return "no";
            return FromCodePage(WithoutPadding(bytes, ' '));
        case Kind::kInt:
            return field.width == 2 ? fmt::format("{}", NumberOf<std::int16_t>(bytes))
                                    : fmt::format("{}", NumberOf<std::int32_t>(bytes));
        case Kind::kUnsigned:
            return field.width == 2 ? fmt::format("{}", NumberOf<std::uint16_t>(bytes))
                                    : fmt::format("{}", NumberOf<std::uint32_t>(bytes));
        case Kind::kFloat:
        case Kind::kDollars:
        case Kind::kCents: {
            const auto number = NumberOf<float>(bytes);
            if (!std::isfinite(number)) return HexOf(bytes);
            if (field.kind == Kind::kFloat) return FloatText(number);
            return field.kind == Kind::kDollars ? DollarsText(number, 0) : DollarsText(number, -2);
        }
        case Kind::kDate:
            return fmt::format("{}-{}-{}", bytes.substr(0, 4), bytes.substr(4, 2), bytes.substr(6));
    }
    return {};
}

}  // namespace

std::string HexOf(std::string_view bytes) {
    std::string text(kHex);
    for (const char byte : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return text;
}

std::vector<Column> ColumnsOf(std::span<const Field> fields) {
    std::vector<Column> columns;
    for (const Field& field : fields) {
        for (std::size_t i = 0; i < field.count; ++i) {
            columns.push_back({field.count == 1 ? std::string(field.name)
                                                : fmt::format("{}_{}", field.name, i + 1),
                               &field, field.offset + i * field.width});
        }
    }
    return columns;
}

bool IsText(Kind kind) {
    return kind == Kind::kText || kind == Kind::kPostal || kind == Kind::kCode ||
           kind == Kind::kRight;
}

bool IsHosts(const Field& field) {
    const std::string_view name = field.name;
    return name.starts_with("host_") || name.starts_with("saved_") || name.starts_with("reserved_");
}

bool IsLeftOut(const Field& field, std::string_view bytes) {
    if (field.is_needed || bytes != BytesOfNothing(field)) return false;
    return IsText(field.kind) || field.kind == Kind::kFlag || field.kind == Kind::kDate ||
           IsHosts(field);
}

std::string FieldText(const Field& field, std::string_view bytes) {
    std::string text = RuleText(field, bytes);
    const FieldBytes back = BytesOfText(field, text);
    if (back.bytes == bytes && back.problem.empty()) return text;
    return HexOf(WithoutPadding(bytes, Padding(field)));
}

FieldBytes BytesOfText(const Field& field, std::string_view text) {
    if (text.starts_with(kHex)) {
        std::optional<std::string> bytes = BytesOfHex(text.substr(kHex.size()));
        if (!bytes) return {{}, "has no pairs of hexadecimal digits behind \"hex:\""};
        if (bytes->size() > field.width) {
            return {{}, fmt::format("has {} bytes, and {} have room", bytes->size(), field.width)};
        }
        bytes->resize(field.width, Padding(field));
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

std::string BytesOfNothing(const Field& field) {
    return std::string(field.width, Padding(field));
}

std::string CarriedText(std::string_view bytes) {
    // Blanks at an end would be lost on the way through an editor.
    const bool is_open = bytes.starts_with(' ') || bytes.ends_with(' ');
    std::string text = FromCodePage(bytes);
    return !is_open && !text.starts_with(kHex) && ToCodePage(text) == bytes ? text : HexOf(bytes);
}

std::optional<std::string> CarriedBytes(std::string_view text) {
    if (text.starts_with(kHex)) return BytesOfHex(text.substr(kHex.size()));
    return IsUtf8(text) ? ToCodePage(text) : std::nullopt;
}

}  // namespace cwt
