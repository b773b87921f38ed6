// What the engine had to say about a request beside rating it.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Handles the status code in the engine's rate record: shows its message, blanks the points or
/// fetches alternatives. Reports through ErrorCode and EngineList.
void HandleEngineStatus(RateContext& context);

}  // namespace hundredweight
