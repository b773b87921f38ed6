// What a shipment's sender should know though it is rated: what was cut, rounded or left out.
#pragma once

#include <hundredweight/rate_context.h>

#include <string>
#include <vector>

#include "shipment/shipment.h"

namespace cwt {

/// Looks at a record whose discount is settled, before it is rated.
std::vector<std::string> NotesOn(const Shipment& shipment, const RateContext& context);

}  // namespace cwt
