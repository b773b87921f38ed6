#include "reference/engine/alternatives.h"

#include <algorithm>
#include <iterator>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

bool IsCityUnknown(const RateBase& base, const RequestPoint& point) {
    return !FindPoint(base, point) && !base.PointsAt(point.postal_code).empty();
}

/// Null when the status names no point.
const RequestPoint* PointOf(const RateRequest& request, Status status) {
    switch (status) {
        case Status::kOriginCityNotChosen:
        case Status::kOriginCityUnknown:
            return &request.origin;
        case Status::kDestinationCityNotChosen:
        case Status::kDestinationCityUnknown:
            return &request.destination;
        default:
            return nullptr;
    }
}

}  // namespace

const Point* FindPoint(const RateBase& base, const RequestPoint& point) {
    if (!point.city_chosen) return nullptr;
    for (const Point* known : base.PointsAt(point.postal_code)) {
        const bool same_city = point.city.empty() || SameName(known->city, point.city);
        const bool same_state = point.state.empty() || SameName(known->state, point.state);
        if (same_city && same_state) return known;
    }
    return nullptr;
}

Status CheckCities(const RateBase& base, const RateRequest& request) {
    if (!request.origin.city_chosen) return Status::kOriginCityNotChosen;
    if (IsCityUnknown(base, request.origin)) return Status::kOriginCityUnknown;
    if (!request.destination.city_chosen) return Status::kDestinationCityNotChosen;
    if (IsCityUnknown(base, request.destination)) return Status::kDestinationCityUnknown;
    return Status::kNone;
}

std::size_t CountAlternatives(const RateBase& base, const RateRequest& request, Status status) {
    const RequestPoint* point = PointOf(request, status);
    return point ? base.PointsAt(point->postal_code).size() : 0;
}

void ListAlternatives(const RateBase& base, const EngineRateRecord& record,
                      EngineListBlock& block) {
    const RateRequest request = ReadRequest(record);
    const auto status = DigitsValue(ColumnText(record.Status)).value_or(0);
    const RequestPoint* point = PointOf(request, static_cast<Status>(status));
    block.Count = -1;
    if (!point) return;

    PutLeft(block.Header, point->postal_code);
    std::int32_t count = 0;
    for (const Point* known : base.PointsAt(point->postal_code)) {
        if (static_cast<std::size_t>(count) == std::size(block.Entries)) break;
        EngineAlternative& entry = block.Entries[count++];
        PutLeft(entry.Code, known->state);
        PutLeft(entry.Text, known->city);
        entry.EngineByte = ' ';
    }
    block.Count = count;
}

}  // namespace hundredweight::reference
