// The classes and weight breaks of a tariff that has none of its own.
#pragma once

#include <array>
#include <cstdint>

namespace hundredweight {

struct WeightBreak {
    const char* name;
    int32_t min;  ///< Pounds.
    int32_t max;  ///< Pounds.
};

/// The 18 freight classes of the National Motor Freight Classification, highest first.
extern const std::array<const char*, 18> StandardClassList;
extern const std::array<WeightBreak, 9> StandardWeightBreaks;

}  // namespace hundredweight
