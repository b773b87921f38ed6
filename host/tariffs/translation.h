// A tariff set made text, and a set made of the text.
#pragma once

#include <string>
#include <vector>

#include "tariffs/finding.h"
#include "tariffs/sheet.h"

namespace cwt {

struct Translation {
    std::string set;                    ///< Base name of the set.
    Files files;                        ///< Of the folder, or of the data directory.
    Findings findings;                  ///< Files with an error among them are not to be used.
    std::vector<std::string> left_out;  ///< Files that were given, and are no part of it.
};

/// The folder of a set. `data` are the files of its directory by their names; those that are not
/// the set's, its users' or its partners' are left out, and told. Nothing of the others is lost:
/// what keeps no rule is there in hexadecimal digits. `option_files` names those that have names of
/// their own.
Translation ExportSet(const Files& data, const std::string& set,
                      const std::vector<std::string>& option_files = {});

/// The files that a folder tells.
Translation BuildSet(const Files& folder);

}  // namespace cwt
