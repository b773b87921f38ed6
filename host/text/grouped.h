// Thousands of a number set apart.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace cwt {

/// The text of a number with commas between thousands.
inline std::string Grouped(std::string number) {
    constexpr std::size_t kThousand = 3;
    const std::size_t first = number.starts_with('-') ? 1 : 0;
    std::size_t at = std::min(number.find('.'), number.size());
    while (at > first + kThousand) number.insert(at -= kThousand, 1, ',');
    return number;
}

}  // namespace cwt
