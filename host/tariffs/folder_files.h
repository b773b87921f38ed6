// The files of a directory in memory, and files put into a directory.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tariffs/sheet.h"

namespace cwt {

/// All files of a directory by their names, and, `deep`, those of its folders ("engine/lanes.csv").
/// Names that begin with a dot are left out. Throws std::runtime_error, with the reason, for what
/// cannot be read.
Files ReadFiles(const std::filesystem::path& directory, bool deep);

/// The names among `names` that the directory has.
std::vector<std::string> Present(const std::filesystem::path& directory,
                                 const std::vector<std::string>& names);

/// Puts files into a directory, which is made when it is missing. Each takes its name when it is
/// whole; `last`, when it is one of them, goes before the others are written and comes behind them,
/// so that what is written in part is told by its absence. Throws std::runtime_error as above.
void WriteFiles(const std::filesystem::path& directory, const Files& files,
                const std::string& last);

/// Removes files, missing ones too.
void RemoveFiles(const std::filesystem::path& directory, const std::vector<std::string>& names);

}  // namespace cwt
