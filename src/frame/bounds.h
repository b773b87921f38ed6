// Counts and indexes that come from outside, held against the arrays that they speak of. Arrays of
// numbers may lie unaligned and are measured by an array of texts beside them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace hundredweight {

/// The nearest count of entries that an array of `capacity` entries has.
inline int32_t BoundedCount(int32_t count, std::size_t capacity) {
    return std::clamp(count, 0, static_cast<int32_t>(capacity));
}

/// Whether an array has an entry of this index.
template <class Entry, std::size_t Capacity>
bool HasEntry(const Entry (&)[Capacity], int32_t index) {
    static_assert(alignof(Entry) == 1);
    return index >= 0 && index < static_cast<int32_t>(Capacity);
}

}  // namespace hundredweight
