#include "reference/engine/alternatives.h"

#include <iterator>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

bool IsCityUnknown(const PlacedPoint& placed) {
    return !placed.point && !placed.known.empty();
}

/// Of the two, that which a status names; null when it names none.
template <typename Value>
const Value* NamedBy(Status status, const Value& origin, const Value& destination) {
    switch (status) {
        case Status::kOriginCityNotChosen:
        case Status::kOriginCityUnknown:
            return &origin;
        case Status::kDestinationCityNotChosen:
        case Status::kDestinationCityUnknown:
            return &destination;
        default:
            return nullptr;
    }
}

bool Fits(const Point& known, const RequestPoint& point) {
    return (point.city.empty() || SameName(known.City(), point.city)) &&
           (point.state.empty() || SameName(known.State(), point.state));
}

}  // namespace

PlacedPoint Place(const RateBase& base, const RequestPoint& point) {
    PlacedPoint placed{base.points.At(point.postal_code)};
    if (!point.city_chosen) return placed;
    for (const Point& known : placed.known) {
        if (!Fits(known, point)) continue;
        placed.point = &known;
        break;
    }
    return placed;
}

Status CheckCities(const RateRequest& request, const PlacedPoints& points) {
    if (!request.origin.city_chosen) return Status::kOriginCityNotChosen;
    if (IsCityUnknown(points.origin)) return Status::kOriginCityUnknown;
    if (!request.destination.city_chosen) return Status::kDestinationCityNotChosen;
    if (IsCityUnknown(points.destination)) return Status::kDestinationCityUnknown;
    return Status::kNone;
}

std::size_t CountAlternatives(const PlacedPoints& points, Status status) {
    const PlacedPoint* const named = NamedBy(status, points.origin, points.destination);
    return named ? named->known.size() : 0;
}

void ListAlternatives(const RateBase& base, const EngineRateRecord& record,
                      EngineListBlock& block) {
    const RateRequest request = ReadRequest(record);
    const auto status = DigitsValue(ColumnText(record.Status)).value_or(0);
    const RequestPoint* point =
        NamedBy(static_cast<Status>(status), request.origin, request.destination);
    block.Count = -1;
    if (!point) return;

    PutLeft(block.Header, point->postal_code);
    std::int32_t count = 0;
    for (const Point& known : base.points.At(point->postal_code)) {
        if (static_cast<std::size_t>(count) == std::size(block.Entries)) break;
        EngineAlternative& entry = block.Entries[count++];
        PutLeft(entry.Code, known.State());
        PutLeft(entry.Text, known.City());
        entry.EngineByte = ' ';
    }
    block.Count = count;
}

}  // namespace hundredweight::reference
