// The files of a session's data, as an explanation cites them and looks records up again.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "bill/explanation.h"
#include "session/sources.h"

namespace cwt {

class DataFiles {
 public:
    /// The discounts may be those of a file elsewhere; else the path is empty.
    DataFiles(const Sources& sources, const std::filesystem::path& discounts_elsewhere);

    /// A record of the set's file of an extension. Without such a file, the field alone.
    Source Record(const std::string& extension, int record, const std::string& field = {}) const;

    /// A record of the profiles' file.
    Source Profile(int record, const std::string& field = {}) const;

    /// The set's file of an extension; an empty path when there is none.
    std::filesystem::path Path(const std::string& extension) const;

    /// The bytes of such a file, read when they are asked for first; none without a file.
    const std::string& Table(const std::string& extension);

 private:
    Listing listing_;
    std::string set_;
    std::filesystem::path discounts_elsewhere_;
    std::map<std::string, std::string> tables_;  ///< By extension.
};

}  // namespace cwt
