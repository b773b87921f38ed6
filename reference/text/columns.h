// Texts in fixed columns, and the numbers and dates that are written in them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "reference/engine/money.h"

namespace hundredweight::reference {

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// The text without blanks at its ends.
constexpr std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}
/// What a column holds up to its first zero byte, trimmed.
std::string_view ColumnText(std::span<const char> column);

/// Left-aligned and padded with blanks; a longer text is cut.
void PutLeft(std::span<char> column, std::string_view text);
/// Right-aligned and padded; the text must fit.
void PutRight(std::span<char> column, std::string_view text, char padding = ' ');
/// A number that is not negative, right-aligned and padded; it must fit.
void PutNumber(std::span<char> column, std::int64_t number, char padding);
/// The same with two decimals: "123.45".
void PutAmount(std::span<char> column, Cents amount, char padding);

bool IsDigits(std::string_view text);
/// Value of a text of one to nine digits and nothing else.
std::optional<std::int32_t> DigitsValue(std::string_view text);
/// An amount of dollars and two decimals that fits a rate column.
std::optional<Cents> AmountValue(std::string_view text);
/// YYYYMMDD of a date MM-DD-YYYY.
std::optional<std::int32_t> DateValue(std::string_view text);

/// Equality without regard to the case of ASCII letters.
bool SameName(std::string_view a, std::string_view b);

}  // namespace hundredweight::reference
