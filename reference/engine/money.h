// Money in whole cents: exact, and half a cent rounds up.
#pragma once

#include <cstdint>

namespace hundredweight::reference {

using Cents = std::int64_t;

/// The largest amounts that their columns hold: 9999.99 and 999999.99.
inline constexpr Cents kHighestRate = 999'999;
inline constexpr Cents kHighestCharge = 99'999'999;

/// A percentage in hundredths, as discounts are sent: 4550 is 45.5 percent.
using PercentHundredths = std::int32_t;

/// share / whole of an amount that is not negative; whole is even.
constexpr Cents Portion(Cents amount, std::int64_t share, std::int64_t whole) {
    return (amount * share + whole / 2) / whole;
}

/// Charge of a weight in pounds at a rate per hundredweight.
constexpr Cents ChargeOf(std::int32_t weight, Cents rate) {
    return Portion(rate, weight, 100);
}

constexpr Cents DiscountOf(Cents charge, PercentHundredths percent) {
    return Portion(charge, percent, 10'000);
}

constexpr std::int32_t WholeDollars(Cents amount) {
    return static_cast<std::int32_t>(Portion(amount, 1, 100));
}

}  // namespace hundredweight::reference
