// Bars that a page draws, as inline SVG.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// A text as HTML and SVG take it.
std::string Escaped(std::string_view text);

struct Bar {
    std::string name;
    int64_t value = 0;
    std::string text;  ///< The value as it is shown.
};

/// Bars from a common line, rising ones to its right and falling ones to its left. A screen reader
/// is told the title and the description.
std::string BarChart(const std::string& id, const std::string& title,
                     const std::string& description, const std::vector<Bar>& bars);

}  // namespace cwt
