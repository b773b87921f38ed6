// Binary search of ascending records.
#pragma once

#include <cstdint>

namespace hundredweight {

/// Searches ascending records. `place` tells where the key lies: below the record (negative), in it
/// (0) or above it (positive).
template <class Record, class Place>
const Record* Search(const Record* table, int32_t count, Place place) {
    if (table == nullptr || count <= 0) return nullptr;
    int32_t low = 0;
    int32_t high = count - 1;
    while (low <= high) {
        const int32_t middle = low + (high - low) / 2;
        const int where = place(table[middle]);
        if (where == 0) return &table[middle];
        if (where < 0) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return nullptr;
}

}  // namespace hundredweight
