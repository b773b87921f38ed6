#include "reference/text/postal_prefixes.h"

#include "reference/text/columns.h"
#include "reference/text/text_rows.h"

namespace hundredweight::reference {
namespace {

constexpr bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

Prefix PrefixOf(const char* characters) {
    const auto byte = [&](int i) { return Prefix{static_cast<unsigned char>(characters[i])}; };
    return byte(0) << 16 | byte(1) << 8 | byte(2);
}

}  // namespace

PrefixRange ReadPrefixes(std::string_view text) {
    const bool one = text.size() == 3;
    Require(one || (text.size() == 7 && text[3] == '-'), "'", text, "' is no range of prefixes");
    const PrefixRange range{PrefixOf(text.data()), PrefixOf(text.data() + (one ? 0 : 4))};
    Require(range.low <= range.high, "'", text, "' runs backwards");
    return range;
}

Prefix PostalPrefix(std::string_view postal_code) {
    if (postal_code.size() < 3) return kNoPrefix;
    const bool digits = postal_code.size() == 5 && IsDigits(postal_code);
    const bool letters = IsCapital(postal_code[0]) && IsDigits(postal_code.substr(1, 1)) &&
                         IsCapital(postal_code[2]) && postal_code.size() <= 6;
    return digits || letters ? PrefixOf(postal_code.data()) : kNoPrefix;
}

}  // namespace hundredweight::reference
