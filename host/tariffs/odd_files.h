// The files of a tariff set that are no records of one width.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tariffs/folder.h"

namespace cwt {

/// An indexed file's arrays as rows. Result: its data area; the whole file when the arrays are cut.
std::string_view WriteIndex(const Family& family, std::string_view bytes, FolderWriter& folder);
std::optional<std::string> ReadIndex(const Family& family, FolderReader& folder);

/// A row a line. One that is not made by the rule, its line end included, is written as hexadecimal
/// digits. Result: nothing is left.
std::string_view WriteLines(const Family& family, std::string_view bytes, FolderWriter& folder);
std::optional<std::string> ReadLines(const Family& family, FolderReader& folder);

}  // namespace cwt
