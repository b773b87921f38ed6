// The checks that a shipment passes before it is rated.
#pragma once

#include <hundredweight/rate_context.h>

#include <string>
#include <vector>

#include "shipment/shipment.h"

namespace cwt {

/// The state that a postal code lies in, or the library's complaint.
struct StateAnswer {
    std::string state;      ///< Empty when there is none.
    std::string complaint;  ///< Empty when there is a state.
};
StateAnswer FindState(RateContext& context, const std::string& postal_code);

/// Check what has been entered in the record. Result: a complaint for every point, or line, that
/// fails. The points' states are completed on the way.
std::vector<std::string> ValidatePoints(const Shipment& shipment, RateContext& context);
std::vector<std::string> ValidateLines(const Shipment& shipment, RateContext& context);

}  // namespace cwt
