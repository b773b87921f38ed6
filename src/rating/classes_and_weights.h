// The built-in classes and weight breaks, and their laying out in the record.
#pragma once

#include <hundredweight/engine_interface.h>
#include <hundredweight/rate_context.h>

#include <array>
#include <cstdint>

namespace hundredweight {

/// Where SetClassesAndWeights takes the tables from; any other value means the standard ones.
inline constexpr int32_t kTablesFromRequest = 1;
inline constexpr int32_t kTablesFromAnswer = 2;

struct WeightBreak {
    const char* name;
    int32_t min;  ///< Pounds.
    int32_t max;  ///< Pounds.
};

/// The 18 freight classes of the National Motor Freight Classification, highest first.
extern const std::array<const char*, 18> StandardClassList;
extern const std::array<WeightBreak, 9> StandardWeightBreaks;

/// Gives a tariff of freight of all kinds the standard classes.
void SetStandardClasses(RateContext& context, EngineRateRecord& record);
/// Lays out the standard classes and, unless they came from the WGT file, weight breaks.
void SetStandardTables(RateContext& context, EngineRateRecord& record);

}  // namespace hundredweight
