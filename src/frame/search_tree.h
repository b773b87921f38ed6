// Large tables laid out for binary searches.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "frame/block.h"

namespace hundredweight {

/// A copy of a table in the order in which binary searches meet its records: the one in the middle,
/// then the two of which the second step takes one, then the four of the third and so on. It finds
/// the record that Search finds, in unsorted tables too, since it looks at the same ones in turn;
/// but the next ones lie side by side, and are fetched before it is known which is needed.
template <class Record>
class SearchTree {
 public:
    /// Copies a table. The tree stays empty when memory is short.
    void Build(const Record* table, int32_t count) {
        Release();
        if (table == nullptr || count <= 0) return;
        const auto size = static_cast<uint32_t>(count);
        records_ = AllocateBlock<Record>((std::size_t{1} << std::bit_width(size)) * sizeof(Record));
        if (!records_) return;
        size_ = size;
        Lay(table, size, 1);
    }

    void Release() {
        records_.reset();
        size_ = 0;
    }

    bool empty() const { return size_ == 0; }

    /// Searches for the record in which the key lies. `place` is that of Search.
    template <class Place>
    const Record* Find(Place place) const {
        std::size_t at = 1;
        for (uint32_t size = size_; size > 0;) {
            Fetch(at * kAhead);
            const Record& record = records_.get()[at];
            const int where = place(record);
            if (where == 0) return &record;
            // A number, since no processor can foresee on which side it goes on.
            const uint32_t above = where > 0 ? 1 : 0;
            size = SizeOf(size, above);
            at = 2 * at + above;
        }
        return nullptr;
    }

 private:
    /// Two steps ahead lie four records: more only take the room of what is needed sooner.
    static constexpr std::size_t kAhead = 4;
    static constexpr std::size_t kCacheLine = 64;

    /// How many of `size` records lie below the middle one (0) or above it (1).
    static uint32_t SizeOf(uint32_t size, uint32_t above) { return (size - 1 + above) / 2; }

    /// Lays out a part of the table below a place of the tree: below place n are 2n and 2n + 1.
    void Lay(const Record* part, uint32_t size, std::size_t at) {
        if (size == 0) return;
        const uint32_t middle = SizeOf(size, 0);
        records_.get()[at] = part[middle];
        Lay(part, middle, 2 * at);
        Lay(part + middle + 1, SizeOf(size, 1), 2 * at + 1);
    }

    /// Has the records from a place on brought near; beyond the tree's end nothing happens.
    void Fetch(std::size_t at) const {
        const auto begin = reinterpret_cast<uintptr_t>(records_.get()) + at * sizeof(Record);
        for (std::size_t line = 0; line < kAhead * sizeof(Record); line += kCacheLine) {
            // A number until here, since behind the tree's end is nothing to point at.
            __builtin_prefetch(
                reinterpret_cast<const void*>(begin + line));  // NOLINT(performance-no-int-to-ptr)
        }
    }

    Block<Record> records_;  ///< From the place 1 on.
    uint32_t size_ = 0;
};

}  // namespace hundredweight
