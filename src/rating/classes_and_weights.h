// The built-in classes and weight breaks, and their laying out in the record.
#pragma once

#include <hundredweight/engine_interface.h>
#include <hundredweight/rate_context.h>

#include <cstdint>

namespace hundredweight {

/// Where SetClassesAndWeights takes the tables from; any other value means the standard ones.
inline constexpr int32_t kTablesFromRequest = 1;
inline constexpr int32_t kTablesFromAnswer = 2;

/// Gives a tariff of freight of all kinds the standard classes.
void SetStandardClasses(RateContext& context, EngineRateRecord& record);
/// Lays out the standard classes and, unless they came from the WGT file, weight breaks.
void SetStandardTables(RateContext& context, EngineRateRecord& record);

}  // namespace hundredweight
