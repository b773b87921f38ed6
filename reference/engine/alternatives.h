// The points of a request among those of the rate base, and what is offered instead of them.
#pragma once

#include <hundredweight/engine_interface.h>

#include <cstddef>
#include <span>

#include "reference/engine/rate_base.h"
#include "reference/engine/request.h"
#include "reference/engine/status.h"

namespace hundredweight::reference {

/// A point of a request and what is on file there.
struct PlacedPoint {
    std::span<const Point> known;  ///< At its postal code.
    /// The one of its city, or the first when it names no city; null when there is none.
    const Point* point = nullptr;
};
PlacedPoint Place(const RateBase& base, const RequestPoint& point);

struct PlacedPoints {
    PlacedPoint origin;
    PlacedPoint destination;
};

/// Which city, if any, the host is to choose again. A city at a postal code without points on file
/// is taken as it is.
Status CheckCities(const RateRequest& request, const PlacedPoints& points);

/// How many points may be offered for the point that a status names.
std::size_t CountAlternatives(const PlacedPoints& points, Status status);

/// Offers the points at the postal code of the point that the record's status names; a count of -1
/// when the status names none.
void ListAlternatives(const RateBase& base, const EngineRateRecord& record, EngineListBlock& block);

}  // namespace hundredweight::reference
