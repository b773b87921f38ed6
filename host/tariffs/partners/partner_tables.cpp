#include "tariffs/partners/partner_tables.h"

#include <fmt/core.h>

#include <algorithm>

#include "tariffs/partners/hidden_ranges.h"
#include "text/code_page.h"

namespace cwt {
namespace {

using enum PartnerForm;

// clang-format off
constexpr PartnerColumn kTariffColumns[] = {
    {"tariff", kTariff, "Name of the tariff, which shipments and lanes say."},
    {"effective", kDate, "First day on which it can be rated."},
    {"classes", kClasses, "1 to 20 freight classes between blanks; FAK alone: one rate for every class."},
    {"breaks_pounds", kBreaks, "Lowest weight of each of 1 to 20 weight breaks, pounds, between blanks; they ascend from 1 to at most 99999."}};
constexpr PartnerColumn kRateColumns[] = {
    {"tariff", kTariff, "A tariff of tariffs.csv."},
    {"scale", kText, "Name of the scale: the rates that lanes share. It is the rate code on a bill: six characters as they are, fewer as a number of six digits (002041 of 2041, 000000 of letters).", 6, true},
    {"class", kText, "A class of the tariff; a scale has a row for each. Of FAK it may be anything.", 7},
    {"rate_dollars", kRates, "Dollars per hundredweight at each weight break of the tariff, two decimals."}};
constexpr PartnerColumn kLaneColumns[] = {
    {"tariff", kTariff, "A tariff of tariffs.csv."},
    {"origin", kRange, "First three characters of postal codes of the origin. A lane is one way; the first row that fits holds."},
    {"destination", kRange, "Those of the destination."},
    {"scale", kText, "A scale of the tariff in rates.csv.", 6, true},
    {"minimum_dollars", kAmount, "Least net charge, two decimals."},
    {"arbitrary_dollars", kAmount, "Added to the minimum for a point that is hard to serve; 0.00: nothing."}};
constexpr PartnerColumn kStateColumns[] = {
    {"", kRange, "First three characters of postal codes. A postal code outside all ranges is unknown."},
    {"state", kState, "Their state or province, two letters."}};
constexpr PartnerColumn kPointColumns[] = {
    {"postal_code", kPostalCode, "Five digits, or a letter, a digit, a letter and up to three more characters."},
    {"city", kText, "City at it; the first of a postal code serves a shipment that names none.", 17, true},
    {"state", kState, "Its state or province, two letters."},
    {"service", kService, "D: direct; I: through another carrier."}};
constexpr PartnerColumn kTerminalColumns[] = {
    {"name", kText, "Name of the terminal.", 50},
    {"code", kText, "Its code; one that begins with XXX stands for no terminal of the carrier's own.", 5, true},
    {"address", kText, "Street.", 50},
    {"address_2", kText, "Second line of the address.", 50},
    {"city", kText, "City.", 30},
    {"state", kText, "State or province.", 2},
    {"postal_code", kText, "Postal code.", 10},
    {"telephone", kText, "Telephone.", 12},
    {"toll_free", kText, "Telephone, toll-free.", 12},
    {"fax", kText, "Fax.", 12},
    {"hours", kText, "When it is open.", 100},
    {"manager", kText, "Its manager.", 50},
    {"email", kText, "Electronic mail.", 50}};
constexpr PartnerColumn kAreaColumns[] = {
    {"", kRange, "First three characters of postal codes; the first row that fits holds."},
    {"terminal", kText, "Code of the terminal that serves them.", 5, true},
    {"service", kService, "D: direct; I: through another carrier."}};
constexpr PartnerColumn kTransitColumns[] = {
    {"terminal", kText, "Code of a terminal. Days are the same both ways; the first row holds.", 5, true},
    {"other_terminal", kText, "Code of the other; the same one for its own area.", 5, true},
    {"standard_days", kDays, "Business days on the road.", 2, true},
    {"guaranteed_days", kDays, "The same, guaranteed; nothing: not offered.", 2},
    {"border_days", kDays, "Days that the border adds; nothing: none.", 2}};

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

std::span<const PartnerTable> PartnerTables() {
    return kTables;
}

std::size_t CellCount(const PartnerColumn& column) {
    return column.form == kRange ? 2 : column.form == kRates ? kMostTableEntries : 1;
}

std::vector<SheetReader::Wanted> WantedCells(const PartnerTable& table, std::size_t rates) {
    std::vector<SheetReader::Wanted> wanted;
    for (const PartnerColumn& column : table.columns) {
        const std::string name = column.name;
        if (column.form == kRange) {
            const std::string start = name.empty() ? "" : name + "_";
            wanted.push_back({start + "first", true});
            wanted.push_back({start + "last", true});
        } else if (column.form == kRates) {
            for (std::size_t i = 1; i <= rates; ++i) {
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
