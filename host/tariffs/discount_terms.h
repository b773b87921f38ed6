// The percentages and floors of a discount.
#pragma once

#include "tariffs/checked_set.h"

namespace cwt {

/// Doubts percentages and floors of a row, known by their columns' names, that no discount has.
void CheckDiscountTerms(CheckedSet& set, const Table& table, std::size_t row);

}  // namespace cwt
