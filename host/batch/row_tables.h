// The tables of a database of rows, and the bytes in which rows travel to it: a byte for the table,
// then for each of its columns the length of a text, 32 bits, and the text. An empty text is NULL.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "bill/bill_columns.h"

namespace cwt {

enum RowTable : unsigned char { kBillsTable, kLinesTable, kRefusalsTable, kTableCount };

struct TableColumn {
    std::string name;
    ColumnType type;
};

/// The columns of each table.
using RowTables = std::array<std::vector<TableColumn>, kTableCount>;

RowTables MakeRowTables(const std::vector<std::string>& passed);

void AppendCell(std::string& out, std::string_view text);

/// Takes a cell off the front. Throws std::logic_error when it is cut.
std::string_view TakeCell(std::string_view& encoded);

}  // namespace cwt
