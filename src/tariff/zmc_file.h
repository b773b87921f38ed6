// The ZMC file of a tariff set.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>

#include "tariff/zmc_record.h"

namespace hundredweight {

/// Number of whole records, 0 when the set has no ZMC file.
int32_t CountZmcRecords(const RateContext& context);

enum class ZmcOutcome { kNoRecords, kNoMatch, kMatch };

/// Looks for the first of the set's first ZmcCount records that matches. Gives that record or, when
/// none does, the last one of them that there is.
ZmcOutcome FindZmcRecord(const RateContext& context, const ZmcKey& key, ZmcFileRecord& record);

/// Frees what is kept of the file.
void ReleaseZmcFile();

}  // namespace hundredweight
