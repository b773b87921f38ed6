// A record of the ZMC file: a minimum charge by postal-code ranges and rate code.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

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

/// What lies in a record's ranges or not: first point, second point and rate code, as numbers that
/// compare as their bytes do.
inline constexpr std::size_t kZmcRanges = 3;
using ZmcValues = std::array<uint64_t, kZmcRanges>;

struct ZmcRanges {
    ZmcValues low;
    ZmcValues high;
};

ZmcRanges RangesOf(const ZmcFileRecord& record);

/// Whether values lie in ranges, which include both ends.
bool Contain(const ZmcRanges& ranges, const ZmcValues& values);

/// A shipment's values, for records of one way and of either.
struct ZmcKey {
    ZmcValues one_way;
    ZmcValues either_way;

    /// Of points of 5 characters and a rate code of 6.
    ZmcKey(std::string_view origin, std::string_view destination, std::string_view rate_code);

    const ZmcValues& Of(const ZmcFileRecord& record) const {
        return record.Direction == 'F' ? one_way : either_way;
    }
};

}  // namespace hundredweight
