// How the numbers of whole columns change.
#pragma once

#include <vector>

#include "tariffs/difference/difference.h"

namespace cwt {

/// Of all rows that are in both sheets, those that are alike included: columns that changed.
std::vector<ColumnDifference> TallyColumns(const SheetDifference& sheet);

}  // namespace cwt
