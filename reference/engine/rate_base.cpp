#include "reference/engine/rate_base.h"

#include <algorithm>

namespace hundredweight::reference {

std::size_t Tariff::ClassIndex(std::string_view class_code) const {
    if (classes.size() == 1 && classes.front() == "FAK") return 0;
    const auto found = std::ranges::find(classes, class_code);
    return found == classes.end() ? npos : static_cast<std::size_t>(found - classes.begin());
}

std::size_t Tariff::BreakIndex(std::int32_t weight) const {
    const auto above = std::ranges::upper_bound(breaks, weight);
    return static_cast<std::size_t>(above - breaks.begin()) - 1;
}

const Tariff* RateBase::FindTariff(std::string_view name) const {
    const auto found = std::ranges::find(tariffs, name, &Tariff::name);
    return found == tariffs.end() ? nullptr : &*found;
}

const Lane* RateBase::FindLane(std::string_view tariff, std::string_view origin_code,
                               std::string_view destination_code) const {
    const auto found = std::ranges::find_if(lanes, [&](const Lane& lane) {
        return lane.tariff == tariff && lane.origin.Contains(PostalPrefix(origin_code)) &&
               lane.destination.Contains(PostalPrefix(destination_code));
    });
    return found == lanes.end() ? nullptr : &*found;
}

std::string_view RateBase::StateOf(std::string_view postal_code) const {
    const auto prefix = PostalPrefix(postal_code);
    const auto found = std::ranges::find_if(
        states, [&](const StateRange& range) { return range.prefixes.Contains(prefix); });
    return found == states.end() ? std::string_view{} : std::string_view{found->state};
}

std::vector<const Point*> RateBase::PointsAt(std::string_view postal_code) const {
    std::vector<const Point*> found;
    for (const Point& point : points) {
        if (point.postal_code == postal_code) found.push_back(&point);
    }
    return found;
}

}  // namespace hundredweight::reference
