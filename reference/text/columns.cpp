#include "reference/text/columns.h"

#include <algorithm>

namespace hundredweight::reference {
namespace {

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr char Lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

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

void PutNumber(std::span<char> column, std::int64_t number, char padding) {
    auto place = column.end();
    do {
        *--place = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number > 0);
    std::fill(column.begin(), place, padding);
}

void PutAmount(std::span<char> column, Cents amount, char padding) {
    const auto cents = column.last(2);
    cents[0] = static_cast<char>('0' + amount / 10 % 10);
    cents[1] = static_cast<char>('0' + amount % 10);
    column[column.size() - 3] = '.';
    PutNumber(column.first(column.size() - 3), amount / 100, padding);
}

bool IsDigits(std::string_view text) {
    return std::ranges::all_of(text, IsDigit);
}

std::optional<std::int32_t> DigitsValue(std::string_view text) {
    if (text.empty() || text.size() > 9) return std::nullopt;
    std::int32_t value = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return std::nullopt;
        value = 10 * value + (c - '0');
    }
    return value;
}

std::optional<Cents> AmountValue(std::string_view text) {
    // One to four digits, the point, two digits.
    if (text.size() < 4 || text.size() > 7) return std::nullopt;
    const std::size_t point = text.size() - 3;
    const auto dollars = DigitsValue(text.substr(0, point));
    const char tenth = text[point + 1], hundredth = text[point + 2];
    if (!dollars || text[point] != '.' || !IsDigit(tenth) || !IsDigit(hundredth)) {
        return std::nullopt;
    }
    return Cents{*dollars} * 100 + Cents{tenth - '0'} * 10 + (hundredth - '0');
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
