#include "tariffs/partners/partner_tables.h"

#include <fmt/core.h>

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

}  // namespace cwt
