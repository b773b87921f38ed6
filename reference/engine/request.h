// A rate request as the engine reads it from the record, whatever bytes that holds.
#pragma once

#include <hundredweight/engine_interface.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "reference/engine/money.h"
#include "reference/text/postal_prefixes.h"

namespace hundredweight::reference {

inline constexpr std::size_t kLineCount = 8;
inline constexpr std::size_t kDiscountBreaks = 9;

struct RequestPoint {
    std::string_view postal_code;
    std::string_view state;
    std::string_view city;  ///< Empty: the host knows none.
    bool city_chosen = true;
    Prefix prefix = kNoPrefix;
};

struct RequestLine {
    std::string_view class_code;
    std::optional<std::int32_t> weight;  ///< Pounds, 0 for a line not in use; none when malformed.
};

struct DiscountList {
    PercentHundredths flat = 0;
    std::array<PercentHundredths, kDiscountBreaks> breaks{};
    std::size_t count = 0;  ///< Of the breaks in use.

    /// The list was ended, so breaks beyond it are not in use.
    bool IsCut() const { return count < breaks.size(); }
    /// The flat percentage when there is one, else that of the break; breaks beyond the list take
    /// its last.
    PercentHundredths PercentAt(std::size_t weight_break) const;
};

/// Its texts are those of the record.
struct RateRequest {
    std::string_view tariff_name;
    std::string_view date;  ///< MM-DD-YYYY.
    RequestPoint origin;
    RequestPoint destination;
    std::array<RequestLine, kLineCount> lines;
    std::optional<std::int32_t> factor;  ///< Times 10000; none when malformed.
    DiscountList discounts;
};

RateRequest ReadRequest(const EngineRateRecord& record);

}  // namespace hundredweight::reference
