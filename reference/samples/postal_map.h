// Which state or province a postal code belongs to.
#pragma once

#include <span>
#include <string_view>

namespace hundredweight::samples {

/// A range of the first three characters of postal codes, both ends included.
struct PostalRange {
    std::string_view low;
    std::string_view high;
    std::string_view state;
};

/// The states of the United States by ZIP prefix, then the provinces of Canada; ranges ascend.
/// Prefixes that are not assigned or belong to the military have no range.
std::span<const PostalRange> PostalMap();

}  // namespace hundredweight::samples
