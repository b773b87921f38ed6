// The shipment's minimum charge in the tariff's ZMC file.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Finds the shipment's first matching ZMC record and sets ZmcFloor, ZmcMinimum and
/// ZmcMinimumDollars from it.
void LookupZmc(RateContext& context);

}  // namespace hundredweight
