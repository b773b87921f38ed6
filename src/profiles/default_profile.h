// The profile of a user who has none.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Fills Profile with the tariff's classes and the current defaults, under the name "Default".
void SetDefaultProfile(RateContext& context);

}  // namespace hundredweight
