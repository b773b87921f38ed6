// Numbers of a limited number of decimals.
#pragma once

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>

namespace cwt {

/// Whether a number has at most so many decimals: it is the nearest number to the text of itself
/// with these.
inline bool HasDecimals(double value, int decimals) {
    if (std::trunc(value) == value) return true;
    return std::strtod(fmt::format("{:.{}f}", value, decimals).c_str(), nullptr) == value;
}

}  // namespace cwt
