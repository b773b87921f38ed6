// The rating of a shipment: class rates, deficit weight, discount and minimum charge.
#pragma once

#include <array>
#include <cstddef>

#include "reference/engine/alternatives.h"
#include "reference/engine/money.h"
#include "reference/engine/rate_base.h"
#include "reference/engine/request.h"
#include "reference/engine/status.h"

namespace hundredweight::reference {

struct RatedLine {
    Cents rate = 0;  ///< Per hundredweight.
    Cents charge = 0;
};

/// The shipment's lines at the rates of one weight break.
struct BreakRating {
    std::size_t weight_break = 0;
    std::int32_t billed_weight = 0;
    std::array<RatedLine, kLineCount> lines;
    std::int32_t deficit_weight = 0;  ///< Pounds billed beyond the shipment's own.
    RatedLine deficit;
    Cents gross = 0;
};

/// The answer has no room for those of more breaks.
inline constexpr std::size_t kMostBreakEntries = 15;

/// What a weight break would charge for its lowest weight, at the class of the first line.
struct BreakEntry {
    std::int32_t weight = 0;
    Cents rate = 0;
    Cents gross = 0;
    Cents net = 0;  ///< Less the break's discount, but not below the minimum charge.
    bool in_use = true;
};

struct Rating {
    Status status = Status::kNone;
    const Tariff* tariff = nullptr;  ///< Null when not on file.
    const Lane* lane = nullptr;      ///< Null when the shipment was not rated.
    std::int32_t total_weight = 0;
    BreakRating charges;
    PercentHundredths discount_percent = 0;
    Cents discount = 0;
    Cents net = 0;
    std::array<BreakEntry, kMostBreakEntries> break_entries;
    std::size_t break_entry_count = 0;
    PlacedPoints points;  ///< Of a shipment that was rated.
};

Rating RateShipment(const RateBase& base, const RateRequest& request);

}  // namespace hundredweight::reference
