// Money in whole cents, exactly.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/grouped.h"

namespace cwt {

using Cents = int64_t;

/// "-12.50" as -1250; nothing for what is no decimal text of two decimals, or of more than 13
/// digits. A percentage of two decimals is read alike, in hundredths.
std::optional<Cents> ParseCents(std::string_view amount);

/// The same for an amount of a bill, or 0: CheckAmounts tells of what is none.
Cents CentsOf(std::string_view amount);

/// -1250 as "-12.50".
std::string AmountOf(Cents cents);

/// share / whole of an amount; half a cent rounds away from zero, and whole is even.
constexpr Cents Portion(Cents amount, int64_t share, int64_t whole) {
    const int64_t product = amount * share;
    return (product < 0 ? product - whole / 2 : product + whole / 2) / whole;
}

/// The charge of a weight in pounds at a rate per hundredweight.
constexpr Cents ChargeOf(int weight, Cents rate) {
    return Portion(rate, weight, 100);
}

/// A number of hundredths of a percent of an amount.
constexpr Cents PercentOf(Cents amount, int64_t hundredths) {
    return Portion(amount, hundredths, 10'000);
}

/// The share of a part in a base, in hundredths of a percent; nothing when the base is not above
/// zero.
std::optional<int64_t> ShareOf(Cents part, Cents base);

}  // namespace cwt
