// Areas given by the first three characters of their postal codes.
#pragma once

#include <cstdint>
#include <string_view>

namespace hundredweight::reference {

/// The first three characters of a postal code, as a number that orders as they do.
using Prefix = std::uint32_t;
/// No range contains it.
inline constexpr Prefix kNoPrefix = 0xFFFFFFFF;

/// A range of prefixes, both ends included.
struct PrefixRange {
    Prefix low = 0;
    Prefix high = 0;
    bool Contains(Prefix prefix) const { return low <= prefix && prefix <= high; }
};

/// Reads "300-319" or "606"; throws std::runtime_error for anything else.
PrefixRange ReadPrefixes(std::string_view text);

/// The prefix of a postal code of five digits, or of a letter, a digit and a letter with up to
/// three characters behind them; kNoPrefix when the code has neither form.
Prefix PostalPrefix(std::string_view postal_code);

}  // namespace hundredweight::reference
