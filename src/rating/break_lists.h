// The lists of charges per weight break.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Fills the "MC" and the "SS" list from the engine's weight-break entries, floored at the
/// discount floor and the ZMC minimums.
void BuildBreakLists(RateContext& context);

}  // namespace hundredweight
