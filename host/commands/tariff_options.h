// What the commands on tariffs as text have in common.
#pragma once

#include <filesystem>
#include <string>

#include "tariffs/finding.h"

namespace cwt {

/// The base name of the one set in a directory, unless it is told. Throws Broken when there is
/// none, or more than one.
std::string SetIn(const std::filesystem::path& directory, const std::string& told);

/// Writes findings to standard error, errors and warnings first. Of many, those that have room.
void SayFindings(const Findings& findings);

}  // namespace cwt
