// The text files of the reference engine and the reference service guide as sheets.
//
// Such a file has a row a line, fields between bars, below a heading of comments. A sheet has a row
// for each of them; a range and a list of rates have several cells there.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/sheet.h"

namespace cwt {

/// What a field of a partner's file holds.
enum class PartnerForm {
    kTariff,      ///< Eight characters.
    kDate,        ///< MM-DD-YYYY; in the sheet YYYY-MM-DD.
    kClasses,     ///< A list between blanks.
    kBreaks,      ///< The same, of weights.
    kRange,       ///< "300-319" or "606"; two cells, the second empty for a single prefix.
    kRates,       ///< A list between blanks; a cell each, empty behind the last.
    kAmount,      ///< Dollars with two decimals.
    kPostalCode,  ///< As a request has it.
    kState,       ///< Two characters.
    kService,     ///< One character: D or I.
    kDays,        ///< One or two digits, or nothing.
    kText,
};

struct PartnerColumn {
    const char* name;  ///< In the sheet; of ranges and rates, what its cells' names begin with.
    PartnerForm form;
    const char* meaning;     ///< What it is, its unit, and what the partner does with it.
    std::size_t most = 0;    ///< Characters of a text.
    bool is_needed = false;  ///< Days and texts that may not be empty.
};

struct PartnerTable {
    enum Id { kTariffs, kRates, kLanes, kStates, kPoints, kTerminals, kServedAreas, kTransit };
    Id id;
    const char* file;
    const char* folder;  ///< Where in the folder of text the sheet stands.
    const char* sheet;
    const char* heading;  ///< Comments before the rows.
    std::span<const PartnerColumn> columns;

    std::string SheetName() const { return std::string(folder) + sheet; }
    /// The file's own name, as it is in the folder where no sheet can tell it.
    std::string FileName() const { return std::string(folder) + file; }
};

/// All of them; what a table's rows name stands in one before it.
std::span<const PartnerTable> PartnerTables();

inline constexpr std::size_t kMostTableEntries = 20;  ///< Classes or weight breaks of a tariff.

/// Cells of a field that a build reads.
std::size_t CellCount(const PartnerColumn& column);
/// The cells of a sheet with so many rates in a row.
std::vector<SheetReader::Wanted> WantedCells(const PartnerTable& table,
                                             std::size_t rates = kMostTableEntries);

}  // namespace cwt
