// The lanes of a tariff: what it charges from one area to another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "reference/engine/range_index.h"

namespace hundredweight::reference {

struct Lane {
    RangeIndex::Number origin = 0;
    RangeIndex::Number destination = 0;
    std::uint32_t row = 0;  ///< The first row that fits holds.
    std::uint32_t scale = 0;
    std::int32_t minimum = 0;    ///< Minimum charge in cents.
    std::int32_t arbitrary = 0;  ///< Cents, added to the minimum for a point hard to serve.
};

class LaneTable {
 public:
    /// Adds a lane behind the others; its areas and its row are filled in.
    void Add(PrefixRange origin, PrefixRange destination, Lane lane);
    /// To be called when all are there.
    void Build();

    /// Null when no lane fits.
    const Lane* Find(Prefix origin, Prefix destination) const;

 private:
    std::span<const Lane> LanesFrom(RangeIndex::Number origin) const;
    const Lane* LaneTo(std::span<const Lane> lanes, RangeIndex::Number destination) const;

    RangeIndex origins_;
    RangeIndex destinations_;
    std::vector<Lane> lanes_;            ///< By origin, then destination; one lane a pair.
    std::vector<std::uint32_t> starts_;  ///< Of the lanes of each origin, and their end.
};

}  // namespace hundredweight::reference
