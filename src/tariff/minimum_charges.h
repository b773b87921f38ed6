// The two minimum-charge tables, each from a file of long records or one of short records.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// LMC, else MC. Codes: 181, 312, 314.
int32_t ReadMcFile(RateContext& context);

/// LCA, else MCA. Codes: 183, 362, 534.
int32_t ReadMcaFile(RateContext& context);

}  // namespace hundredweight
