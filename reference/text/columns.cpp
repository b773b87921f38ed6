#include "reference/text/columns.h"

#include <algorithm>
#include <charconv>

namespace hundredweight::reference {
namespace {

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr char Lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string_view ColumnText(std::span<const char> column) {
    const std::string_view text(column.data(), column.size());
    return Trimmed(text.substr(0, text.find('\0')));
}

void PutLeft(std::span<char> column, std::string_view text) {
    const auto end = std::ranges::copy(text.substr(0, column.size()), column.begin()).out;
    std::fill(end, column.end(), ' ');
}

void PutRight(std::span<char> column, std::string_view text, char padding) {
    const auto blanks = column.size() - text.size();
    std::ranges::fill(column.first(blanks), padding);
    std::ranges::copy(text, column.subspan(blanks).begin());
}

std::string AmountText(Cents amount) {
    const auto cents = std::to_string(amount % 100);
    return std::to_string(amount / 100) + (cents.size() < 2 ? ".0" : ".") + cents;
}

bool IsDigits(std::string_view text) {
    return std::ranges::all_of(text, IsDigit);
}

std::optional<std::int32_t> DigitsValue(std::string_view text) {
    if (text.empty() || text.size() > 9 || !IsDigits(text)) return std::nullopt;
    std::int32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::optional<Cents> AmountValue(std::string_view text) {
    const auto point = text.find('.');
    if (point == std::string_view::npos || point > 4 || text.size() != point + 3) {
        return std::nullopt;
    }
    const auto dollars = DigitsValue(text.substr(0, point));
    const auto cents = DigitsValue(text.substr(point + 1));
    if (!dollars || !cents) return std::nullopt;
    return Cents{*dollars} * 100 + *cents;
}

std::optional<std::int32_t> DateValue(std::string_view text) {
    if (text.size() != 10 || text[2] != '-' || text[5] != '-') return std::nullopt;
    const auto month = DigitsValue(text.substr(0, 2));
    const auto day = DigitsValue(text.substr(3, 2));
    const auto year = DigitsValue(text.substr(6));
    if (!month || !day || !year) return std::nullopt;
    if (*month < 1 || *month > 12 || *day < 1 || *day > 31 || *year < 1000) return std::nullopt;
    return *year * 10'000 + *month * 100 + *day;
}

bool SameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, Lowered, Lowered);
}

}  // namespace hundredweight::reference
