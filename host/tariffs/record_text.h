// Records of a family as text, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tariffs/folder.h"

namespace cwt {

/// Where the rows of arrays that lie in a table's records name the record, from 1.
inline constexpr const char* kRecordColumn = "record";

/// Writes a file's whole records. Result: the bytes behind them. `sheet` is where a table's rows
/// go.
std::string_view WriteRecords(const Family& family, const std::string& sheet,
                              std::string_view bytes, FolderWriter& folder);

/// The records that the folder tells; nothing when it tells of no such file.
std::optional<std::string> ReadRecords(const Family& family, const std::string& sheet,
                                       FolderReader& folder);

/// Writes the names of columns as a row.
void WriteHeader(const std::vector<Column>& columns, SheetWriter& sheet);

/// Writes the fields of a record as cells, and reads them from a row's cells.
void WriteCells(const std::vector<Column>& columns, std::string_view record, SheetWriter& sheet);
std::string ReadCells(const std::vector<Column>& columns, std::size_t first_cell, std::size_t size,
                      char filling, SheetReader& sheet);

/// The columns that a sheet has for fields.
std::vector<SheetReader::Wanted> WantedColumns(const std::vector<Column>& columns);

}  // namespace cwt
