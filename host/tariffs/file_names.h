// The names of a tariff set's files, in its directory and in its folder of text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tariffs/families/family.h"
#include "tariffs/finding.h"

namespace cwt {

inline constexpr std::string_view kSheetEnd = ".csv";
inline constexpr std::string_view kZipTableEnd = ".ZP6";

/// The name of a family's file.
std::string FileNameOf(const Family& family, const std::string& set);

/// Whether a name is one of those that a folder's files can have.
bool IsTariffText(std::string_view name);
/// Those of them that are always the same.
std::vector<std::string> FolderFileNames();

/// Refuses what is no base name of a set.
bool CheckSetName(const std::string& set, const Place& place, Findings& findings);

/// What is wrong with the name of a file whose sheet bears it; empty when nothing is.
std::string NameProblem(const std::string& name, const std::string& set);

/// The names of the ZIP tables that the profiles of a file can have.
std::vector<std::string> ZipTablesOf(std::string_view profiles);

}  // namespace cwt
