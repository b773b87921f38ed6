// A bill as cells of a table's row.
#pragma once

#include <span>
#include <string>

#include "bill/bill.h"

namespace cwt {

enum class ColumnType { kText, kWhole, kAmount, kPercent };

/// A column with the cell that a bill or a line has in it; empty where it has none.
template <class Of>
struct BillColumn {
    const char* name;
    ColumnType type;
    std::string (*cell)(const Of&);
};

/// The columns before those of the lines, those of a line, and those behind.
std::span<const BillColumn<Bill>> ColumnsBeforeLines();
std::span<const BillColumn<BillLine>> LineColumns();
std::span<const BillColumn<Bill>> ColumnsBehindLines();

}  // namespace cwt
