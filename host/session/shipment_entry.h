// A shipment on its way into the record of a run.
#pragma once

#include <hundredweight/rate_context.h>

#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

/// Writes the points, lines and terms of a shipment into a record. Result: what does not fit it.
Refusals EnterShipment(const Shipment& shipment, RateContext& context);

/// What is wrong with the factor that all sources together come to: the library sends an engine
/// four decimals and one digit before them, and would cut any other. Nothing when it holds.
Refusals CheckFactor(const Shipment& shipment, const RateContext& context);

/// What is wrong with the discount list of all sources: an engine is sent 99.99 percent as the end
/// of the list, and would give no discount, and none that no weight column carries. Nothing when it
/// holds.
Refusals CheckDiscounts(const Shipment& shipment, const RateContext& context);

/// The factor that all sources together come to, in the steps of 0.0001 that the rate record has.
double FactorSteps(const RateContext& context);

}  // namespace cwt
