// What was measured, as text.
#pragma once

#include <string>
#include <vector>

#include "pairs.h"

namespace hundredweight::bench {

/// The head of the table of all rows, in Markdown, and a row of it.
extern const char* const kTableHead;
std::string TableLine(const Row& row);

/// The table of all rows, and before it, when there are such rows, the one in short. Each stands
/// between two comments that name it: scripts/put_performance.py finds them by these.
std::string Markdown(const std::vector<Row>& rows);

std::string Json(const std::vector<Row>& rows);

}  // namespace hundredweight::bench
