// The cells of a row that differ, as people read them.
#pragma once

#include <cstddef>
#include <string>

#include "tariffs/difference/difference.h"

namespace cwt {

/// A cell as it is printed: a long one from shortly before the character `from`.
std::string CellText(const std::string& cell, std::size_t from);

/// The unit that changes of a column are told in.
const char* UnitSign(ColumnMeasure measure);

/// "95.00 -> 99.66 (+4.91 %)".
std::string ChangeText(ColumnMeasure measure, const std::string& of_old, const std::string& of_new);

/// The first cells that changed; of a new or a gone row those that tell most of it. `all`: every
/// one.
std::string CellsText(const SheetDifference& sheet, const RowDifference& row, bool all);

}  // namespace cwt
