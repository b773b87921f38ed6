// The files that a batch's rows depend on, which must stay what they are while it runs.
#pragma once

#include <map>
#include <string>

#include "session/sources.h"

namespace cwt {

/// Every file of the data directory but those that, by their names, a batch reads or writes and
/// those that its standard streams go to; a discount file elsewhere, and partner libraries that are
/// given by their paths.
class DataWatch {
 public:
    /// `may_convert`: a rating may still put profiles of the earlier layout into today's.
    explicit DataWatch(Sources sources, bool may_convert = true);

    /// Size and digest by name, as they were at the start.
    const std::map<std::string, std::string>& files() const { return files_; }

    /// The first file that is another now, is gone or has come, and which of these; empty when all
    /// are what they were.
    std::string Change();

    /// Throws Broken when there is such a file: bills of two tariffs must not stand in one output.
    void RequireUnchanged();

 private:
    using Texts = std::map<std::string, std::string>;

    Texts Look() const;
    static bool IsConverted(const Texts& marks);
    void FollowConversion(Texts& marks);

    const Sources sources_;
    Texts marks_;  ///< What a file's change changes, and costs little to look at.
    Texts files_;
    bool is_converted_;
};

}  // namespace cwt
