// The base-rate file BSE and the WSM table.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Reads the header, which SetVersion chooses, and the body that it locates; the handle stays open.
/// Codes: 220, 224.
int32_t ReadBseFile(RateContext& context);

/// Reads the number at the head of WSM and the entries behind it. No code.
void ReadWsmFile(RateContext& context);

}  // namespace hundredweight
