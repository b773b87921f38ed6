// The two ends of a range in a table, which are compared character by character.
#pragma once

#include "tariffs/checks/checked_set.h"

namespace cwt {

struct RangeEnds {
    const Column& low;
    const Column& high;
    std::size_t compared;  ///< How many characters count.

    std::string_view Low(const Table& table, std::size_t row) const {
        return table.bytes(row, low).substr(0, compared);
    }
    std::string_view High(const Table& table, std::size_t row) const {
        return table.bytes(row, high).substr(0, compared);
    }
};

/// Doubts a range in which there is nothing. Result: whether there is anything.
bool CheckOrder(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends);

/// The same of a range of codes that have at least so many characters, and doubts a high end that
/// is shorter.
bool CheckCodes(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends,
                std::size_t shortest);

/// The same of postal codes, and doubts characters that none has.
bool CheckPostalCodes(CheckedSet& set, const Table& table, std::size_t row, const RangeEnds& ends,
                      std::size_t shortest);

}  // namespace cwt
