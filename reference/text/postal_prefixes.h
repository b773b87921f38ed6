// Areas given by the first three characters of their postal codes.
#pragma once

#include <string>
#include <string_view>

namespace hundredweight::reference {

/// A range of prefixes, both ends included.
struct PrefixRange {
    std::string low;
    std::string high;
    bool Contains(std::string_view prefix) const { return low <= prefix && prefix <= high; }
};

/// Reads "300-319" or "606"; throws std::runtime_error for anything else.
PrefixRange ReadPrefixes(const std::string& text);

/// The prefix of a postal code of five digits, or of a letter, a digit and a letter with up to
/// three characters behind them. Empty when the code has neither form.
std::string_view PostalPrefix(std::string_view postal_code);

}  // namespace hundredweight::reference
