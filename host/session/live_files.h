// The files that a session goes on reading after its load, while it rates.
#pragma once

#include <map>
#include <string>

#include "session/sources.h"

namespace cwt {

/// The profiles with their ZIP tables, the set's ZIP table and minimum charges, and the tables that
/// an explanation looks records up in. A session must have prepared itself before, since that may
/// change the profiles' file.
class LiveFiles {
 public:
    explicit LiveFiles(const Sources& sources);

    /// The name of a file that is another now, has come or is gone since; empty when there is none.
    std::string Changed();

 private:
    using Marks = std::map<std::string, std::string>;

    Marks Look() const;

    Sources sources_;
    std::string directory_;  ///< The directory's mark when its files were listed.
    Marks marks_;            ///< By name.
};

}  // namespace cwt
