// One run of the engine over a prepared request.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

inline constexpr int32_t kRated = 0;
inline constexpr int32_t kEngineOff = 1;
inline constexpr int32_t kRatingFailed = 9999;

// Codes of a request that the engine did not rate.
inline constexpr int32_t kEngineRefused = -1;  ///< Its own message has been shown.
inline constexpr int32_t kEngineFailed = 133;
inline constexpr int32_t kNoAlternatives = 134;

/// Result: kRated, or kRatingFailed with code -1, 133 or 134.
int32_t RunEngineRating(RateContext& context);

/// Lays out the tables of the engine's last answer, asking the engine for them when the answer has
/// no usable ones.
void LayOutEngineTables(RateContext& context);

}  // namespace hundredweight
