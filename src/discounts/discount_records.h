// The discount file's record, part by part. All numbers are decimal text.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstring>

namespace hundredweight {

struct DiscountGroup {
    char Percent[9][6];  ///< One per weight column.
    char FlatPercent[6];
    char Floor[7];  ///< Minimum charge.
};
static_assert(sizeof(DiscountGroup) == sizeof(RateContext::DisColumns[0]));

struct WeightColumn {
    char Mark;  ///< A blank or 0 ends the list of columns.
    char HostBytes[10];
    char LowestWeight[14];
};
static_assert(sizeof(WeightColumn) == sizeof(RateContext::DisWeightColumns[0]));

inline constexpr int32_t kGroups = 4;
inline constexpr int32_t kWeightColumns = 9;

inline DiscountGroup GroupAt(const RateContext& context, int32_t group) {
    DiscountGroup record;
    std::memcpy(&record, context.DisColumns[group], sizeof record);
    return record;
}

inline WeightColumn WeightColumnAt(const RateContext& context, int32_t column) {
    WeightColumn record;
    std::memcpy(&record, context.DisWeightColumns[column], sizeof record);
    return record;
}

}  // namespace hundredweight
