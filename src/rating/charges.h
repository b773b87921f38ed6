// The engine's answer as printable charges.
#pragma once

#include <hundredweight/rate_context.h>

#include <string_view>

namespace hundredweight {

/// Writes every result field of the record from the engine's rate record.
void BuildChargeLines(RateContext& context);

/// Copies the first n source characters without the '0' characters at their head into a zeroed
/// destination.
void StripLeadingZeros(const char* source, char* destination, int32_t n);

}  // namespace hundredweight
