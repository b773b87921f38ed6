// The indexed files ZF1, ZF2 and ZFM: an index that is loaded, and a data area that the host reads
// through the open handle.
#pragma once

#include <hundredweight/rate_context.h>

namespace hundredweight {

/// Result of each: 1, or 0 with the file's code. ZF2 also probes for RTC, else RCL.
int32_t ReadZf1File(RateContext& context);
int32_t ReadZf2File(RateContext& context);
int32_t ReadZfmFile(RateContext& context);

}  // namespace hundredweight
