// The files of a directory in memory, and files put into a directory.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tariffs/sheet.h"

namespace cwt {

/// All files of a directory by their names, and, `deep`, those of its folders ("engine/lanes.csv");
/// what these have for folders is there by its name alone ("engine/old/"). Names that begin with a
/// dot are left out. Throws std::runtime_error, with the reason, for what
/// cannot be read, and for a folder in the place of a file.
Files ReadFiles(const std::filesystem::path& directory, bool deep);

/// The names of a directory, and those among them that are `name` in any letters, as data are
/// looked for.
std::vector<std::string> NamesIn(const std::filesystem::path& directory);
std::vector<std::string> InAnyLetters(const std::string& name,
                                      const std::vector<std::string>& names);

/// Whether a file has these bytes, and no others.
bool HasBytes(const std::filesystem::path& file, const std::string& bytes);

/// Writes files into a directory, and the folders that they name. Throws as above.
void WriteFiles(const std::filesystem::path& directory, const Files& files);

}  // namespace cwt
