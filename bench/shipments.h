// Generated shipments, and their rating one after the other.
#pragma once

#include <vector>

#include "pairs.h"
#include "session/session.h"
#include "shipment/shipment.h"

namespace hundredweight::bench {

/// Those of the first so many whose form is right.
std::vector<cwt::Shipment> GeneratedShipments(int count);

/// Rates all of them; both must live as long as the work.
Work RateAll(cwt::Session& session, const std::vector<cwt::Shipment>& shipments);

}  // namespace hundredweight::bench
