// The shipments of a comparison as CSV, old and new figures side by side.
#pragma once

#include <string>

#include "comparison/batch_row.h"

namespace cwt {

/// With its line end, CRLF, like the rows.
std::string PairHeader();
std::string PairRow(const BatchRow& old_row, const BatchRow& new_row);

}  // namespace cwt
