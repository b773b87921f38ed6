// The labels and table names that name a tariff.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstddef>

namespace hundredweight {

/// Length of the ZPS record.
inline constexpr std::size_t kZpsRecordSize = 628;

/// Reads BSV from BsvHandle: four labels, and whether ZPS is suppressed. Code: 225.
int32_t ReadBsvFile(RateContext& context);

/// Reads ZPS from ZpsHandle into ZpsRecord: two labels that replace those of BSV. Code: 444.
int32_t ReadZpsFile(RateContext& context);

/// Reads up to 25 table names. Code: 450.
int32_t ReadTblFile(RateContext& context);

}  // namespace hundredweight
