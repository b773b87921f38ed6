// Comma-separated values as of RFC 4180, lines ending in LF or CRLF. A quote counts at the start of
// a field alone; what is quoted badly costs its own line and no other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// Where the first row of a text ends, behind its line end; npos when the text, or its first
/// `longest` bytes, do not hold it to its end. With `last` nothing follows the text, and its end
/// ends a row too. A row with a quoted field that is never closed, or that something follows, ends
/// at its first line end.
std::size_t CsvRowEnd(std::string_view text, bool last, std::size_t longest);

/// Splits a row, with or without its line end. Result: what is wrong with its quotes; empty when
/// nothing is.
std::string SplitCsvRow(std::string_view row, std::vector<std::string>& fields);

/// Adds a field to a row, quoted where it must be.
void AppendCsvField(std::string& row, std::string_view field);

}  // namespace cwt
