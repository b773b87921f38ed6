#include "tariffs/partners/partner_forms.h"

#include <algorithm>
#include <chrono>

namespace cwt {
namespace {

bool IsDigit(char c) {
    return '0' <= c && c <= '9';
}

bool IsCapital(char c) {
    return 'A' <= c && c <= 'Z';
}

}  // namespace

bool IsPartnerAmount(std::string_view text) {
    constexpr std::size_t kShortest = 4, kLongest = 7, kDecimals = 3;
    if (text.size() < kShortest || text.size() > kLongest) return false;
    const std::size_t point = text.size() - kDecimals;
    return text[point] == '.' && std::ranges::all_of(text.substr(0, point), IsDigit) &&
           std::ranges::all_of(text.substr(point + 1), IsDigit);
}

std::optional<std::int32_t> PartnerNumber(std::string_view text) {
    constexpr std::size_t kMostDigits = 9;
    if (text.empty() || text.size() > kMostDigits) return std::nullopt;
    std::int32_t number = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return std::nullopt;
        number = 10 * number + (c - '0');
    }
    return number;
}

DateKind PartnerDate(std::string_view text) {
    if (text.size() != 10 || text[2] != '-' || text[5] != '-') return DateKind::kNone;
    const auto month = PartnerNumber(text.substr(0, 2)), day = PartnerNumber(text.substr(3, 2)),
               year = PartnerNumber(text.substr(6));
    if (!month || !day || !year) return DateKind::kNone;
    if (*month < 1 || *month > 12 || *day < 1 || *day > 31 || *year < 1000) return DateKind::kNone;
    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    return date.ok() ? DateKind::kDay : DateKind::kNoDay;
}

bool IsPostalPrefix(std::string_view text) {
    if (text.size() != 3) return false;
    return std::ranges::all_of(text, IsDigit) ||
           (IsCapital(text[0]) && IsDigit(text[1]) && IsCapital(text[2]));
}

bool IsPostalCode(std::string_view text) {
    constexpr std::size_t kLongest = 6;
    if (text.size() < 3 || !IsPostalPrefix(text.substr(0, 3))) return false;
    if (IsCapital(text[0])) return text.size() <= kLongest;
    return text.size() == 5 && std::ranges::all_of(text, IsDigit);
}

}  // namespace cwt
