// The columns of a table of shipments.
#pragma once

#include <string>
#include <vector>

namespace cwt {

/// How a spreadsheet's cell is taken.
enum class CellKind { kText, kPostalCode, kClass, kNumber, kFlag };

/// A column that is read, as a member of the shipment's JSON form: of the whole, of one of its
/// objects or of one of its lines.
struct ShipmentColumn {
    std::string name;
    std::string object;
    int line;  ///< From 0; kNoLine of a column that is of none.
    std::string key;
    CellKind kind;
};

inline constexpr int kNoLine = -1;

struct ShipmentHeader {
    std::vector<const ShipmentColumn*> columns;  ///< Null where nobody reads the column.
    std::vector<std::string> passed;             ///< The names of these.
};

/// Throws std::runtime_error, with the reason, for names that cannot be relied on: a column twice,
/// one that is wanted and not there, or one that nobody reads though it is nearly called as one
/// that is read, unless it is allowed.
ShipmentHeader MatchColumns(const std::vector<std::string>& names,
                            const std::vector<std::string>& allowed);

}  // namespace cwt
