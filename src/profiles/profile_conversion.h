// The one-time conversion of a profile file of the earlier layout.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// The code of a profile file that cannot be made or converted.
inline constexpr int32_t kCannotPrepare = 121;

/// Moves the state records that lead a profile's ZIP-range discounts behind the others, in every
/// profile. Result: 1 when the file is, or was already, converted, else 0.
int32_t ConvertProfileFile(RateContext& context);

}  // namespace hundredweight
