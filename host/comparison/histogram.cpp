#include "comparison/histogram.h"

#include <algorithm>
#include <cstdlib>

namespace cwt {
namespace {

constexpr int64_t kAll = 100;  ///< Per cent.
constexpr int64_t kMostBands = 16;

/// The multiple at or below a value.
int64_t FloorTo(int64_t value, int64_t width) {
    const int64_t quotient = value / width - (value % width < 0 ? 1 : 0);
    return quotient * width;
}

/// 1, 2, 5, 10, 20, ...: the least by which a range falls into few enough bands.
int64_t WidthFor(int64_t lowest, int64_t highest) {
    for (int64_t decade = 1;; decade *= 10) {
        for (const int64_t step : {1, 2, 5}) {
            const int64_t width = step * decade;
            const int64_t from = FloorTo(lowest, width);
            if ((FloorTo(highest, width) - from) / width < kMostBands) return width;
        }
    }
}

}  // namespace

int64_t Histogram::Kept(int64_t value) {
    constexpr int64_t kDigits = 10'000;
    int64_t unit = 1;
    while (std::abs(value) / unit >= kDigits) unit *= 10;
    const int64_t half = value < 0 ? -unit / 2 : unit / 2;
    return (value + half) / unit * unit;
}

std::vector<std::pair<int64_t, int64_t>> Histogram::Sorted() const {
    std::vector<std::pair<int64_t, int64_t>> sorted(counts_.begin(), counts_.end());
    std::ranges::sort(sorted);
    return sorted;
}

int64_t Histogram::Percentile(int percent) const {
    const int64_t wanted = std::max<int64_t>((size_ * percent + kAll - 1) / kAll, 1);
    int64_t passed = 0;
    for (const auto& [value, count] : Sorted()) {
        passed += count;
        if (passed >= wanted) return value;
    }
    return 0;
}

std::vector<Histogram::Band> Histogram::Bands() const {
    if (size_ == 0) return {};
    const int64_t low = Percentile(5), high = Percentile(95);
    const int64_t width = WidthFor(low, high);
    const int64_t first = FloorTo(low, width), end = FloorTo(high, width) + width;
    std::vector<Band> bands = {{first, first, true, false, 0}};
    for (int64_t from = first; from < end; from += width) {
        bands.push_back({from, from + width, false, false, 0});
    }
    bands.push_back({end, end, false, true, 0});
    for (const auto& [value, count] : counts_) {
        const int64_t index = value < first  ? 0
                              : value >= end ? static_cast<int64_t>(bands.size()) - 1
                                             : 1 + (value - first) / width;
        bands[static_cast<std::size_t>(index)].count += count;
    }
    if (bands.back().count == 0) bands.pop_back();
    if (bands.front().count == 0) bands.erase(bands.begin());
    return bands;
}

}  // namespace cwt
