// What the partners read in a field: numbers, dates, postal codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace cwt {

inline constexpr std::int32_t kHighestBreak = 99'999;  ///< Pounds.

/// Dollars with two decimals, at most 9999.99.
bool IsPartnerAmount(std::string_view text);
/// One to nine digits and nothing else.
std::optional<std::int32_t> PartnerNumber(std::string_view text);

enum class DateKind {
    kNone,
    kNoDay,  ///< A date to the partner, and no day of the calendar: February 30.
    kDay,
};
/// Of a date MM-DD-YYYY.
DateKind PartnerDate(std::string_view text);

/// The first three characters of a postal code: three digits, or a letter, a digit and a letter.
bool IsPostalPrefix(std::string_view text);
bool IsPostalCode(std::string_view text);

}  // namespace cwt
