#include "bill/money.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>

namespace cwt {

std::optional<Cents> ParseCents(std::string_view amount) {
    constexpr std::size_t kMostDigits = 13, kDecimals = 2;
    const bool negative = amount.starts_with('-');
    if (negative) amount.remove_prefix(1);
    if (amount.size() < kDecimals + 2 || amount.size() > kMostDigits + 1) return std::nullopt;
    const std::size_t point = amount.size() - kDecimals - 1;
    Cents cents = 0;
    for (std::size_t i = 0; i < amount.size(); ++i) {
        if (i == point && amount[i] == '.') continue;
        if (i == point || amount[i] < '0' || amount[i] > '9') return std::nullopt;
        cents = cents * 10 + (amount[i] - '0');
    }
    return negative ? -cents : cents;
}

Cents CentsOf(std::string_view amount) {
    return ParseCents(amount).value_or(0);
}

std::string AmountOf(Cents cents) {
    return fmt::format("{}{}.{:02}", cents < 0 ? "-" : "", std::abs(cents) / 100,
                       std::abs(cents) % 100);
}

std::optional<int64_t> ShareOf(Cents part, Cents base) {
    constexpr double kHundredths = 10'000;
    if (base <= 0) return std::nullopt;
    return std::llround(static_cast<double>(part) * kHundredths / static_cast<double>(base));
}

}  // namespace cwt
