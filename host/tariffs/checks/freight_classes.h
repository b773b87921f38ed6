// The classes of the National Motor Freight Classification, as tariffs write them.
#pragma once

#include <algorithm>
#include <string_view>

namespace cwt {

/// 92 and 77 stand for 92.5 and 77.5.
inline constexpr std::string_view kFreightClasses[] = {"500", "400", "300", "250", "200", "175",
                                                       "150", "125", "110", "100", "92",  "85",
                                                       "77",  "70",  "65",  "60",  "55",  "50"};
/// Freight of all kinds, at one rate.
inline constexpr std::string_view kAllKinds = "FAK";

inline bool IsFreightClass(std::string_view name) {
    return std::ranges::find(kFreightClasses, name) != std::end(kFreightClasses);
}

}  // namespace cwt
