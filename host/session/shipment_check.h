// The checks that a shipment passes before it is rated.
#pragma once

#include <hundredweight/rate_context.h>

#include <string>

#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

/// The state that a postal code lies in; when there is none, the reason. The place is that of the
/// postal code.
struct StateAnswer {
    std::string state;
    Refusals refusals;
};
StateAnswer FindState(RateContext& context, const std::string& place,
                      const std::string& postal_code);

/// Check what has been entered in the record. Result: a refusal for every point, or line, that
/// fails. The points' states are completed on the way.
Refusals CheckPoints(const Shipment& shipment, RateContext& context);
Refusals CheckLines(const Shipment& shipment, RateContext& context);

}  // namespace cwt
