// Fields of records as the values that rating reads in them.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace cwt {

/// A text up to its terminator, without the blanks around it.
std::string_view Trimmed(std::string_view bytes);

/// A number as people write it; 0 of no text, nothing of what is no number.
std::optional<double> DecimalIn(std::string_view bytes);
/// The same, of a whole number.
std::optional<int> WholeIn(std::string_view bytes);

/// A number that lies in a record as the processor has it.
template <class Number>
Number BinaryIn(std::string_view bytes) {
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

}  // namespace cwt
