// How often a value came up, exact to four digits.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace cwt {

/// Values below 10,000 are kept as they are, others rounded to four digits, so that a histogram
/// stays small whatever it counts.
class Histogram {
 public:
    void Add(int64_t value) {
        ++counts_[Kept(value)];
        ++size_;
    }

    int64_t size() const { return size_; }

    /// The lowest value that so many per cent of all do not exceed; 0 when there are none.
    int64_t Percentile(int percent) const;

    /// From a value on, up to but without another; the first and the last may be open.
    struct Band {
        int64_t from, to;
        bool open_below, open_above;
        int64_t count;
    };
    /// At most 18 bands: those of one round width that the values from the 5th to the 95th
    /// percentile lie in, and what is below and above.
    std::vector<Band> Bands() const;

 private:
    static int64_t Kept(int64_t value);
    std::vector<std::pair<int64_t, int64_t>> Sorted() const;

    std::unordered_map<int64_t, int64_t> counts_;
    int64_t size_ = 0;
};

}  // namespace cwt
