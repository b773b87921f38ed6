#include "reference/engine/lane_table.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace hundredweight::reference {
namespace {

bool HaveSameAreas(const Lane& one, const Lane& other) {
    return one.origin == other.origin && one.destination == other.destination;
}

auto PlaceOf(const Lane& lane) {
    return std::tuple(lane.origin, lane.destination, lane.row);
}

/// Those of the destinations that contain a prefix; more overlap in odd files only.
struct Destinations {
    std::array<RangeIndex::Number, 32> numbers;
    std::size_t count = 0;  ///< Not all are listed when there are more than numbers.

    bool AllListed() const { return count <= numbers.size(); }
};

/// The lane of the two that comes first in the file; either may be null.
const Lane* First(const Lane* one, const Lane* other) {
    if (!one || !other) return one ? one : other;
    return one->row < other->row ? one : other;
}

}  // namespace

void LaneTable::Add(PrefixRange origin, PrefixRange destination, Lane lane) {
    lane.origin = origins_.Add(origin);
    lane.destination = destinations_.Add(destination);
    lane.row = static_cast<std::uint32_t>(lanes_.size());
    lanes_.push_back(lane);
}

void LaneTable::Build() {
    // A file in the order of its areas is sorted then.
    const auto origins = origins_.Renumber();
    const auto destinations = destinations_.Renumber();
    for (Lane& lane : lanes_) {
        lane.origin = origins[lane.origin];
        lane.destination = destinations[lane.destination];
    }
    origins_.Build();
    destinations_.Build();
    if (!std::ranges::is_sorted(lanes_, {}, PlaceOf)) std::ranges::sort(lanes_, {}, PlaceOf);
    const auto hidden = std::unique(lanes_.begin(), lanes_.end(), HaveSameAreas);
    lanes_.erase(hidden, lanes_.end());
    starts_.assign(origins_.Size() + 1, 0);
    for (const Lane& lane : lanes_) ++starts_[lane.origin + 1];
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
}

std::span<const Lane> LaneTable::LanesFrom(RangeIndex::Number origin) const {
    return std::span(lanes_).subspan(starts_[origin], starts_[origin + 1] - starts_[origin]);
}

const Lane* LaneTable::LaneTo(std::span<const Lane> lanes, RangeIndex::Number destination) const {
    // The lanes of an origin go to different destinations, so that few can be missing before the
    // one looked for, and with all of them none.
    const std::size_t missing = destinations_.Size() - lanes.size();
    const std::size_t low = destination > missing ? destination - missing : 0;
    const std::size_t high = std::min<std::size_t>(destination + 1, lanes.size());
    if (low >= high) return nullptr;
    const auto window = lanes.subspan(low, high - low);
    const auto found = std::ranges::lower_bound(window, destination, {}, &Lane::destination);
    return found != window.end() && found->destination == destination ? &*found : nullptr;
}

const Lane* LaneTable::Find(Prefix origin, Prefix destination) const {
    Destinations fitting;
    destinations_.ForEachContaining(destination, [&](RangeIndex::Number number) {
        if (fitting.count < fitting.numbers.size()) fitting.numbers[fitting.count] = number;
        ++fitting.count;
    });
    const Lane* first = nullptr;
    origins_.ForEachContaining(origin, [&](RangeIndex::Number number) {
        const auto lanes = LanesFrom(number);
        if (fitting.AllListed() && fitting.count < lanes.size()) {
            for (std::size_t i = 0; i < fitting.count; ++i) {
                first = First(first, LaneTo(lanes, fitting.numbers[i]));
            }
            return;
        }
        for (const Lane& lane : lanes) {
            if (destinations_.Contains(lane.destination, destination)) first = First(first, &lane);
        }
    });
    return first;
}

}  // namespace hundredweight::reference
