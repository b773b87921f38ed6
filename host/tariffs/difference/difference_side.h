// One side of a comparison of tariff sets: the set as sheets, whatever form it had.
#pragma once

#include <string>
#include <vector>

#include "tariffs/finding.h"
#include "tariffs/sheet.h"

namespace cwt {

/// The section of settings that a sheet's name tells: "settings.json: defaults".
inline constexpr const char* kSectionMark = "settings.json: ";

struct DifferenceSide {
    std::string path;
    std::string set;
    bool is_folder = false;
    /// The set's, spelled as an export spells them. Each section of the settings is a sheet of one
    /// row, the bytes of each carried file are a row, and rows of records bear the records' names.
    Files sheets;
    /// Files of the directory or folder that are no part of the set.
    Files others;
};

/// A folder as it is once it was built; a folder that cannot be built is refused.
DifferenceSide SideOfFolder(const std::string& path, Files files, Findings& findings);

/// A directory, whose set has a name. `option_files` as for an export.
DifferenceSide SideOfDirectory(const std::string& path, const std::string& set, Files files,
                               const std::vector<std::string>& option_files, Findings& findings);

}  // namespace cwt
