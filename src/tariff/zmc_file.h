// The ZMC file: minimum charges by postal-code ranges and rate code.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>

namespace hundredweight {

/// One record. Ranges include both ends and compare byte by byte.
#pragma pack(push, 1)
struct ZmcFileRecord {
    char Direction;  ///< 'F': first range is the origin, second the destination; else either way.
    char FirstLow[5];
    char FirstHigh[5];
    char SecondLow[5];
    char SecondHigh[5];
    char RateCodeLow[6];
    char RateCodeHigh[6];
    float MinimumAmount;  ///< Compared as stored; a hundredth of it is in dollars.
    float FloorAmount;    ///< A hundredth of it is the floor.
};
#pragma pack(pop)
static_assert(sizeof(ZmcFileRecord) == 41);

/// Number of whole records, 0 when the set has no ZMC file.
int32_t CountZmcRecords(const RateContext& context);

}  // namespace hundredweight
