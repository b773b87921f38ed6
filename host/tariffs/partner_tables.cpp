#include "tariffs/partner_tables.h"

#include <fmt/core.h>

#include <algorithm>

#include "text/code_page.h"

namespace cwt {
namespace {

using enum PartnerForm;

// clang-format off
constexpr PartnerColumn kTariffColumns[] = {
    {"tariff", kTariff}, {"effective", kDate}, {"classes", kClasses}, {"breaks_pounds", kBreaks}};
constexpr PartnerColumn kRateColumns[] = {
    {"tariff", kTariff}, {"scale", kText, 6, true}, {"class", kText, 7}, {"rate_dollars", kRates}};
constexpr PartnerColumn kLaneColumns[] = {
    {"tariff", kTariff}, {"origin", kRange}, {"destination", kRange}, {"scale", kText, 6, true},
    {"minimum_dollars", kAmount}, {"arbitrary_dollars", kAmount}};
constexpr PartnerColumn kStateColumns[] = {{"", kRange}, {"state", kState}};
constexpr PartnerColumn kPointColumns[] = {
    {"postal_code", kPostalCode}, {"city", kText, 17, true}, {"state", kState},
    {"service", kService}};
constexpr PartnerColumn kTerminalColumns[] = {
    {"name", kText, 50}, {"code", kText, 5, true}, {"address", kText, 50},
    {"address_2", kText, 50}, {"city", kText, 30}, {"state", kText, 2},
    {"postal_code", kText, 10}, {"telephone", kText, 12}, {"toll_free", kText, 12},
    {"fax", kText, 12}, {"hours", kText, 100}, {"manager", kText, 50}, {"email", kText, 50}};
constexpr PartnerColumn kAreaColumns[] = {
    {"", kRange}, {"terminal", kText, 5, true}, {"service", kService}};
constexpr PartnerColumn kTransitColumns[] = {
    {"terminal", kText, 5, true}, {"other_terminal", kText, 5, true},
    {"standard_days", kDays, 2, true}, {"guaranteed_days", kDays, 2}, {"border_days", kDays, 2}};

constexpr PartnerTable kTables[] = {
    {PartnerTable::kTariffs, "tolvex-tariffs.txt", "engine/", "tariffs.csv",
     "# tariff | effective | classes | lowest weight of each break, pounds\n", kTariffColumns},
    {PartnerTable::kRates, "tolvex-rates.txt", "engine/", "rates.csv",
     "# tariff | scale | class | dollars per hundredweight at each break\n", kRateColumns},
    {PartnerTable::kLanes, "tolvex-lanes.txt", "engine/", "lanes.csv",
     "# tariff | origin prefixes | destination prefixes | scale | minimum | arbitrary\n",
     kLaneColumns},
    {PartnerTable::kStates, "tolvex-states.txt", "engine/", "states.csv",
     "# postal-code prefixes | state or province\n", kStateColumns},
    {PartnerTable::kPoints, "tolvex-points.txt", "engine/", "points.csv",
     "# postal code | city | state | service\n", kPointColumns},
    {PartnerTable::kTerminals, "servgd-terminals.txt", "service-guide/", "terminals.csv",
     "# name | code | address | second line | city | state | postal code | telephone | toll-free |"
     " fax | hours | manager | electronic mail\n"
     "# A code that begins with XXX stands for no terminal of the carrier's own.\n",
     kTerminalColumns},
    {PartnerTable::kServedAreas, "servgd-points.txt", "service-guide/", "points.csv",
     "# postal-code prefixes | terminal | service\n", kAreaColumns},
    {PartnerTable::kTransit, "servgd-transit.txt", "service-guide/", "transit-days.csv",
     "# terminal | terminal | standard business days | guaranteed | added at the border\n",
     kTransitColumns},
};
// clang-format on

constexpr std::size_t kPrefixLength = 3;

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
        if (!has_ended) rates.append(rates.empty() ? "" : " ").append(cells[i]);
    }
    return {rates, {}};
}

}  // namespace

std::span<const PartnerTable> PartnerTables() {
    return kTables;
}

std::size_t CellCount(const PartnerColumn& column) {
    return column.form == kRange ? 2 : column.form == kRates ? kMostTableEntries : 1;
}

std::vector<SheetReader::Wanted> WantedCells(const PartnerTable& table) {
    std::vector<SheetReader::Wanted> wanted;
    for (const PartnerColumn& column : table.columns) {
        const std::string name = column.name;
        if (column.form == kRange) {
            const std::string start = name.empty() ? "" : name + "_";
            wanted.push_back({start + "first", true});
            wanted.push_back({start + "last", true});
        } else if (column.form == kRates) {
            for (std::size_t i = 1; i <= kMostTableEntries; ++i) {
                wanted.push_back({fmt::format("{}_{}", name, i), i == 1});
            }
        } else {
            wanted.push_back({name, true});
        }
    }
    return wanted;
}

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

std::vector<std::string> CellsOf(const PartnerColumn& column, std::string_view field) {
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
    cells.resize(kMostTableEntries);
    return cells;
}

PartnerField FieldOf(const PartnerColumn& column, std::span<const std::string_view> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (const char* const problem = ProblemOf(column, cells[i])) return {{}, problem, i};
    }
    PartnerField field = column.form == kDate    ? DateOf(cells[0])
                         : column.form == kRange ? RangeOf(cells[0], cells[1])
                         : column.form == kRates ? RatesOf(cells)
                                                 : PartnerField{std::string(cells[0]), {}};
    field.bytes = ToBytes(field.bytes);
    return field;
}

}  // namespace cwt
