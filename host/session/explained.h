// The explanation of a bill, subject by subject.
#pragma once

#include "bill/explanation.h"
#include "session/rated_shipment.h"

namespace cwt {

/// The whole explanation, in the order of the bill.
Explanation Explain(const RatedShipment& rated);

// Its parts. Each adds statements on its own subject.
void ExplainPoints(const RatedShipment& rated, Explanation& explanation);
void ExplainTariff(const RatedShipment& rated, Explanation& explanation);
void ExplainFactor(const RatedShipment& rated, Explanation& explanation);
void ExplainLines(const RatedShipment& rated, Explanation& explanation);
void ExplainDeficit(const RatedShipment& rated, Explanation& explanation);
void ExplainDiscount(const RatedShipment& rated, Explanation& explanation);
void ExplainMinimum(const RatedShipment& rated, Explanation& explanation);
void ExplainSurcharge(const RatedShipment& rated, Explanation& explanation);
void ExplainBreakCharges(const RatedShipment& rated, Explanation& explanation);

}  // namespace cwt
