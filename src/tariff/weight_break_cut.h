// The DEF record's override that cuts the list of weight breaks short.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Upper bound in pounds of the last weight break.
inline constexpr int32_t kHighestWeight = 9999999;

/// Cuts the list to DefBreakIndex + DefBreakCount breaks when DefBreakCount is given and the list
/// is longer than that.
void CutWeightBreaks(RateContext& context);

}  // namespace hundredweight
