// The rate request that goes to the engine.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>
#include <string_view>

namespace hundredweight {

/// The city of a point for which none was chosen; it fills the engine's field.
inline constexpr std::string_view kNoCity = "None of the above";

/// Writes the engine's rate record from the shipment. Result: 1, or 0 with code 118, 501 or 103.
int32_t PrepareEngineRequest(RateContext& context, int32_t request_code);

}  // namespace hundredweight
