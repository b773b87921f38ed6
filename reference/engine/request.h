// A rate request as the engine reads it from the record, whatever bytes that holds.
#pragma once

#include <hundredweight/engine_interface.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "reference/engine/money.h"

namespace hundredweight::reference {

inline constexpr std::size_t kLineCount = 8;

struct RequestPoint {
    std::string postal_code;
    std::string state;
    std::string city;  ///< Empty: the host knows none.
    bool city_chosen = true;
};

struct RequestLine {
    std::string class_code;
    std::optional<std::int32_t> weight;  ///< Pounds, 0 for a line not in use; none when malformed.
};

struct DiscountList {
    PercentHundredths flat = 0;
    std::vector<PercentHundredths> breaks;  ///< One per weight break in use.
    bool cut = false;  ///< The list was ended, so breaks beyond it are not in use.

    /// The flat percentage when there is one, else that of the break; breaks beyond the list take
    /// its last.
    PercentHundredths PercentAt(std::size_t weight_break) const;
};

struct RateRequest {
    std::string tariff_name;
    std::string date;  ///< MM-DD-YYYY.
    RequestPoint origin;
    RequestPoint destination;
    std::array<RequestLine, kLineCount> lines;
    std::optional<std::int32_t> factor;  ///< Times 10000; none when malformed.
    DiscountList discounts;
};

RateRequest ReadRequest(const EngineRateRecord& record);

}  // namespace hundredweight::reference
