// Where the discount of a rated shipment comes from.
#pragma once

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "session/rated_shipment.h"

namespace cwt {

/// Percentages that a discount has at most, one a weight break.
inline constexpr std::size_t kDiscountBreaks = 9;
/// What DiscountSource says of a ZIP or state record of the profile.
inline constexpr char kFromZipRecord = 'Z';

struct DiscountOrigin {
    std::string words;                 ///< A sentence.
    std::vector<Source> sources = {};  ///< Of the sentence.
    bool has_values = false;           ///< The four below are known.
    Source percent = {};               ///< Of the weight break asked for.
    Source flat = {};
    Source floor = {};
};

/// Finds it again by the library's rule; what does not agree with the settled list is not named.
DiscountOrigin FindDiscountOrigin(const RatedShipment& rated, std::size_t weight_break);

// The origins that a profile has: its groups, and its ZIP and state records.
DiscountOrigin DiscountOfGroup(const RatedShipment& rated, std::size_t weight_break);
DiscountOrigin DiscountOfZipRecord(const RatedShipment& rated, std::size_t weight_break);

/// The number of ZIP and state records of the profile.
int CountZipRecords(const RateContext& context);

/// The value of a number's text, blanks before it allowed.
template <std::size_t Size>
float ValueOf(const char (&field)[Size]) {
    const std::string text(field, strnlen(field, Size));
    return static_cast<float>(std::strtod(text.c_str(), nullptr));
}

}  // namespace cwt
