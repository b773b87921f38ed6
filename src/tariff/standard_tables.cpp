#include "tariff/standard_tables.h"

#include "tariff/weight_break_cut.h"

namespace hundredweight {

const std::array<const char*, 18> StandardClassList = {"500", "400", "300", "250", "200", "175",
                                                       "150", "125", "110", "100", "92",  "85",
                                                       "77",  "70",  "65",  "60",  "55",  "50"};

const std::array<WeightBreak, 9> StandardWeightBreaks = {{
    {"L5C", 0, 499},
    {"M5C", 500, 999},
    {"M1M", 1000, 1999},
    {"M2M", 2000, 4999},
    {"M5M", 5000, 9999},
    {"M10M", 10000, 19999},
    {"M20M", 20000, 29999},
    {"M30M", 30000, 39999},
    {"M40M", 40000, kHighestWeight},
}};

}  // namespace hundredweight
