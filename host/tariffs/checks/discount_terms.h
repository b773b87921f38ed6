// The percentages and floors of a discount.
#pragma once

#include "tariffs/checks/checked_set.h"

namespace cwt {

/// A percentage or an amount, whether its field has a text or a number; nothing of what is none.
std::optional<float> TermIn(const Column& column, std::string_view bytes);

/// Doubts percentages and floors of a row, known by their columns' names, that no discount has.
void CheckDiscountTerms(CheckedSet& set, const Table& table, std::size_t row);

}  // namespace cwt
