// The freight classes and weight breaks of a tariff set.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Reads up to 20 classes. Codes: 230, 235.
int32_t ReadClsFile(RateContext& context);

}  // namespace hundredweight
