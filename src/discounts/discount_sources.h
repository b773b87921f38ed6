// The three sources of a shipment's discount.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>

namespace hundredweight {

/// The number of weight columns in use, 0 to 9.
int32_t DiscountColumns(const RateContext& context);

/// The group of the discount file that the shipment belongs to, 0 to 3.
int32_t SelectDiscountGroup(const RateContext& context);

/// Result: 1 when both points lie in one state, else 0.
int32_t SameState(const RateContext& context);

/// Takes floor and flat percentage from the selected group.
void ApplyGroupDiscount(RateContext& context);
/// Takes the percentage of one weight column from the selected group.
void ApplyGroupBreakPercent(RateContext& context, int32_t column);
/// Takes the whole list from the values that the host entered.
void ApplyEntryDiscount(RateContext& context);
/// Takes the list from the first ZIP-range record of the profile that matches. Result: 1 when one
/// did, else 0 and the list as it was.
int32_t ApplyZipDiscount(RateContext& context);

}  // namespace hundredweight
