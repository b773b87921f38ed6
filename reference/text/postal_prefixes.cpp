#include "reference/text/postal_prefixes.h"

#include "reference/text/columns.h"
#include "reference/text/text_rows.h"

namespace hundredweight::reference {
namespace {

constexpr bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

}  // namespace

PrefixRange ReadPrefixes(const std::string& text) {
    const bool one = text.size() == 3;
    Require(one || (text.size() == 7 && text[3] == '-'), "'" + text + "' is no range of prefixes");
    PrefixRange range{text.substr(0, 3), text.substr(one ? 0 : 4)};
    Require(range.low <= range.high, "'" + text + "' runs backwards");
    return range;
}

std::string_view PostalPrefix(std::string_view postal_code) {
    if (postal_code.size() < 3) return {};
    const auto prefix = postal_code.substr(0, 3);
    const bool digits = postal_code.size() == 5 && IsDigits(postal_code);
    const bool letters = IsCapital(prefix[0]) && IsDigits(prefix.substr(1, 1)) &&
                         IsCapital(prefix[2]) && postal_code.size() <= 6;
    return digits || letters ? prefix : std::string_view{};
}

}  // namespace hundredweight::reference
