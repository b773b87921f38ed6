// The spellings that people and spreadsheets use. What is unmistakable is put right; anything else
// stays as it was written, for the library to judge.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

std::string_view WithoutBlanksAround(std::string_view text);

/// A text with its ASCII letters in capitals.
std::string UpperCase(std::string_view text);

/// The forms of a postal code, for complaints.
inline std::vector<std::string> PostalCodeForms() {
    return {"a ZIP of five digits (30303)", "a Mexican code of five digits and M (64000M)",
            "a Canadian postal code (M5H2N2)"};
}

/// "m5h 2n2" as "M5H2N2", "30303-1234" as "30303", "64000 m" as "64000M".
std::string SpellPostalCode(std::string_view written);

/// A ZIP that a spreadsheet has made a number of, with its leading zeros.
std::string SpellZipNumber(int64_t number);

/// "77.5" as "77" and "92.5" as "92", which is how tariffs call these classes; blanks around any
/// class go.
std::string SpellClass(std::string_view written);

}  // namespace cwt
