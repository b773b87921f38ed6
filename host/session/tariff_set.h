// A tariff set in the record of a run.
#pragma once

#include <hundredweight/rate_context.h>

#include <memory>
#include <vector>

#include "session/set_files.h"
#include "session/sources.h"

namespace cwt {

/// A zeroed record that knows where its files are, and its release. Throws Broken when a name does
/// not fit the record.
class TariffSet {
 public:
    explicit TariffSet(const Sources& sources);
    ~TariffSet();
    TariffSet(const TariffSet&) = delete;
    TariffSet& operator=(const TariffSet&) = delete;

    RateContext& context() { return *context_; }

    /// Reads the defaults, if there are any, and the whole set. Result: the code of a failure, or
    /// 0.
    int32_t Load();

    /// Reads the level file and the discounts. Result as above.
    int32_t LoadTerms();

    /// The set's discount file of the current directory, which serves in the place of the one in
    /// the set's; an empty path when there is none.
    static std::filesystem::path DiscountsElsewhere(const Sources& sources);

    /// The file of the profiles; an empty path when there is none.
    std::filesystem::path ProfileFile() const { return FindFile(sources_.data, "PROFILE.FIL"); }

    /// The set's files, by the settings in the record.
    std::vector<SetFile> Files() const {
        return ListSetFiles(Listing(sources_.data), sources_.set, *context_);
    }

    /// Throws Broken for a file that is there but cannot be read, which the library takes for one
    /// that is not, and, of a set whose load had no failure, for a table that ends within a record.
    void RequireSound(const std::vector<SetFile>& files, int32_t failure) const;

 private:
    Sources sources_;
    std::unique_ptr<RateContext> context_;
};

}  // namespace cwt
