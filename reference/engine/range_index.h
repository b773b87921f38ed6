// Ranges of prefixes, however they overlap, and which of them contain a prefix.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "reference/engine/numbering.h"
#include "reference/text/postal_prefixes.h"

namespace hundredweight::reference {

class RangeIndex {
 public:
    using Number = Numbering::Number;

    /// The range's number; equal ranges have one, and numbers follow the order of adding.
    Number Add(PrefixRange range);
    /// Numbers the ranges anew, by their lowest prefixes. Result: the new numbers by the old ones.
    std::vector<Number> Renumber();
    /// To be called when all are there.
    void Build();

    std::size_t Size() const { return numbers_.Size(); }
    bool Contains(Number number, Prefix prefix) const;
    /// Visits the numbers of the ranges that contain a prefix, in any order.
    template <typename Visit>
    void ForEachContaining(Prefix prefix, Visit visit) const {
        auto end = static_cast<std::size_t>(
            std::ranges::upper_bound(entries_, prefix, {}, &Entry::low) - entries_.begin());
        while (end > 0) {
            const Entry& entry = entries_[end - 1];
            if (entry.high >= prefix) {
                visit(entry.number);
                --end;
            } else {
                end = entry.higher;
            }
        }
    }

 private:
    /// Entries ascend by their lowest prefix.
    struct Entry {
        Prefix low = 0;
        Prefix high = 0;
        Number number = 0;
        /// One past the nearest entry before this one that reaches higher, 0 for none: where this
        /// one ends too low, so do those between.
        std::uint32_t higher = 0;
    };

    Numbering numbers_;
    std::vector<Entry> entries_;
};

}  // namespace hundredweight::reference
