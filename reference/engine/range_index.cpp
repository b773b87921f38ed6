#include "reference/engine/range_index.h"

#include <utility>

namespace hundredweight::reference {
namespace {

constexpr int kHalf = 32;

PrefixRange RangeOf(Numbering::Key key) {
    return {static_cast<Prefix>(key >> kHalf), static_cast<Prefix>(key)};
}

}  // namespace

RangeIndex::Number RangeIndex::Add(PrefixRange range) {
    return numbers_.Add(Numbering::Key{range.low} << kHalf | range.high);
}

std::vector<RangeIndex::Number> RangeIndex::Renumber() {
    std::vector<Numbering::Key> keys;
    keys.reserve(numbers_.Size());
    for (Number number = 0; number < numbers_.Size(); ++number) {
        keys.push_back(numbers_.KeyOf(number));
    }
    auto sorted = keys;
    std::ranges::sort(sorted);
    Numbering renumbered;
    for (const auto key : sorted) renumbered.Add(key);
    std::vector<Number> numbers;
    numbers.reserve(keys.size());
    for (const auto key : keys) numbers.push_back(renumbered.Add(key));
    numbers_ = std::move(renumbered);
    return numbers;
}

void RangeIndex::Build() {
    entries_.clear();
    for (Number number = 0; number < numbers_.Size(); ++number) {
        const PrefixRange range = RangeOf(numbers_.KeyOf(number));
        entries_.push_back({range.low, range.high, number});
    }
    std::ranges::sort(entries_, {}, &Entry::low);
    for (std::uint32_t i = 0; i < entries_.size(); ++i) {
        std::uint32_t higher = i;
        while (higher > 0 && entries_[higher - 1].high <= entries_[i].high) {
            higher = entries_[higher - 1].higher;
        }
        entries_[i].higher = higher;
    }
}

bool RangeIndex::Contains(Number number, Prefix prefix) const {
    return RangeOf(numbers_.KeyOf(number)).Contains(prefix);
}

}  // namespace hundredweight::reference
