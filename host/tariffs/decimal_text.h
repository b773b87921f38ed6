// Numbers as decimal texts: a sign, digits, a point, digits.
#pragma once

#include <string>
#include <string_view>

namespace cwt {

/// Whether people would write a number so.
bool IsDecimal(std::string_view text);

/// Such a text with its point moved to the right by so many digits, or, negative, to the left,
/// without zeros that say nothing.
std::string WithPointMoved(std::string_view text, int digits);

/// The fewest digits that give the same number, never with an exponent.
std::string FloatText(float number);

/// The same with the point moved, and two decimals or more.
std::string DollarsText(float number, int point_moved);

}  // namespace cwt
