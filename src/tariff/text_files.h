// The text files of a tariff set: LAB, read in blocks of lines, and the look-up list LAM.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Indexes the blocks of LAB; the stream stays open. Codes: 280, 284.
int32_t ReadLabFile(RateContext& context);

/// Reads up to 220 look-up entries. Code: 290.
int32_t ReadLamFile(RateContext& context);

void CloseLabStream(RateContext& context);

}  // namespace hundredweight
