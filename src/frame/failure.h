// How a function fails.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>

namespace hundredweight {

/// The code of a shipment whose ends are not both served.
inline constexpr int32_t kOutOfScope = 103;

/// Stores an error code and gives the result of a failure.
inline int32_t Fail(RateContext& context, int32_t code) {
    context.ErrorCode = code;
    return 0;
}

}  // namespace hundredweight
