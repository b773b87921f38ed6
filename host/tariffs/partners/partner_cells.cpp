#include "tariffs/partners/partner_cells.h"

#include <fmt/core.h>

#include <algorithm>

#include "tariffs/partners/hidden_ranges.h"
#include "text/code_page.h"

namespace cwt {
namespace {

using enum PartnerForm;

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool IsPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c < '\x7f'; });
}

/// Dollars with the zeros that a spreadsheet drops: 29.2 and 29 as 29.20 and 29.00.
std::string WithCents(std::string_view cell) {
    std::string amount(cell);
    const bool is_number = !cell.empty() && cell.find_first_not_of("0123456789.") == cell.npos;
    if (!is_number || cell.front() == '.' || cell.back() == '.') return amount;
    const std::size_t point = cell.find('.');
    if (point == cell.npos) return amount + ".00";
    return point + 2 == cell.size() ? amount + '0' : amount;
}

/// What keeps a cell from standing in a line; empty when nothing does.
const char* ProblemOf(const PartnerColumn& column, std::string_view cell) {
    if (cell.find_first_of("|#") != cell.npos) {
        return "holds | or #, which part fields and begin comments in the partner's file";
    }
    if (Trimmed(cell).size() != cell.size()) return "has a blank at an end, which would be lost";
    if (column.form == kRates && cell.find(' ') != cell.npos) return "is more than one rate";
    if (!IsPlain(cell) && !ToCodePage(cell)) {
        return "holds a line end or a character that Windows-1252 has not";
    }
    return nullptr;
}

std::string FromBytes(std::string_view bytes) {
    return IsPlain(bytes) ? std::string(bytes) : FromCodePage(bytes);
}

/// Of a text that has them.
std::string ToBytes(std::string_view text) {
    return IsPlain(text) ? std::string(text) : ToCodePage(text).value_or("");
}

/// A date whose last part, from `at` on, has become the first.
std::string Turned(std::string_view date, std::size_t at) {
    return fmt::format("{}-{}", date.substr(at), date.substr(0, at - 1));
}

PartnerField DateOf(std::string_view cell) {
    const bool is_date = cell.size() == 10 && cell[4] == '-' && cell[7] == '-';
    if (!is_date) return {{}, "is no date YYYY-MM-DD"};
    return {Turned(cell, 5), {}};
}

PartnerField RangeOf(std::string_view first, std::string_view last) {
    constexpr const char* kWanted =
        "is no prefix of three characters; a spreadsheet may have dropped its zeros";
    if (ToBytes(first).size() != kPrefixLength) return {{}, kWanted};
    if (last.empty()) return {std::string(first), {}};
    if (ToBytes(last).size() != kPrefixLength) return {{}, kWanted, 1};
    return {fmt::format("{}-{}", first, last), {}};
}

PartnerField RatesOf(std::span<const std::string_view> cells) {
    std::string rates;
    bool has_ended = false;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (has_ended && !cells[i].empty()) {
            return {{}, "stands behind an empty cell: rates have no gaps", i};
        }
        has_ended = cells[i].empty();
        if (!has_ended) rates.append(rates.empty() ? "" : " ").append(WithCents(cells[i]));
    }
    return {rates, {}};
}

}  // namespace

std::vector<std::string_view> WordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (;;) {
        const auto start = std::ranges::find_if_not(text, IsBlank);
        if (start == text.end()) return words;
        text.remove_prefix(static_cast<std::size_t>(start - text.begin()));
        const auto end = std::ranges::find_if(text, IsBlank);
        words.push_back(text.substr(0, static_cast<std::size_t>(end - text.begin())));
        text.remove_prefix(words.back().size());
    }
}

void SplitPartnerLine(std::string_view line, std::vector<std::string>& fields) {
    std::size_t count = 0;
    for (;; ++count) {
        const std::size_t bar = line.find('|');
        if (fields.size() == count) fields.emplace_back();
        fields[count] = Trimmed(line.substr(0, bar));
        if (bar == line.npos) break;
        line.remove_prefix(bar + 1);
    }
    fields.resize(count + 1);
}

std::string PartnerLine(std::span<const std::string> fields) {
    std::string line;
    for (const std::string& field : fields) {
        if (&field != fields.data()) line += field.empty() ? " |" : " | ";
        line += field;
    }
    return line;
}

std::vector<std::string> CellsOf(const PartnerColumn& column, std::string_view field,
                                 std::size_t rates) {
    const std::string text = FromBytes(field);
    if (column.form == kDate && field.size() == 10) return {Turned(text, 6)};
    if (column.form == kRange) {
        const bool is_one = field.size() <= kPrefixLength;
        const auto part = [&](std::size_t at) {
            return FromBytes(field.substr(at, kPrefixLength));
        };
        return {part(0), is_one ? "" : part(std::min(field.size(), kPrefixLength + 1))};
    }
    if (column.form != kRates) return {text};
    std::vector<std::string> cells;
    for (const std::string_view word : WordsOf(text)) cells.emplace_back(word);
    cells.resize(rates);
    return cells;
}

PartnerField FieldOf(const PartnerColumn& column, std::span<const std::string_view> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (const char* const problem = ProblemOf(column, cells[i])) return {{}, problem, i};
    }
    if (column.form == kAmount) return {WithCents(cells[0]), {}};
    PartnerField field = column.form == kDate    ? DateOf(cells[0])
                         : column.form == kRange ? RangeOf(cells[0], cells[1])
                         : column.form == kRates ? RatesOf(cells)
                                                 : PartnerField{std::string(cells[0]), {}};
    field.bytes = ToBytes(field.bytes);
    return field;
}

}  // namespace cwt
