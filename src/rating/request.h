// The rate request that goes to the engine.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Writes the engine's rate record from the shipment. Result: 1, or 0 with code 118, 501 or 103.
int32_t PrepareEngineRequest(RateContext& context, int32_t request_code);

}  // namespace hundredweight
