// The record of a set's minimum-charge file that a rated shipment has fallen under.
#pragma once

#include <hundredweight/rate_context.h>

#include <optional>
#include <string>

#include "session/data_files.h"

namespace cwt {

struct MinimumChargeMatch {
    int record = 0;     ///< From 1; 0 when the file no longer holds it.
    Source source;      ///< The same, to cite.
    std::string words;  ///< Its ranges: "from postal codes 30000-31999 to ...".
    float minimum = 0;  ///< As filed: a hundredth of it is in dollars.
    float floor = 0;    ///< Alike.
};

/// Nothing when the shipment falls under none, or the set has no such file.
std::optional<MinimumChargeMatch> FindMinimumCharge(const RateContext& context,
                                                    const DataFiles& files);

}  // namespace cwt
