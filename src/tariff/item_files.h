// Accessorial items and adjustments.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Reads up to 100 accessorial items and indexes two of their codes. Codes: 490, 494.
int32_t ReadAccFile(RateContext& context);

/// Reads the keys of up to 400 adjustment records; the handle stays open. Codes: 210, 214.
int32_t ReadAdjFile(RateContext& context);

}  // namespace hundredweight
