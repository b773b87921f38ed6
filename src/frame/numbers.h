// Numbers as fixed-width decimal text. Texts are read from their own characters only, as decimal
// numbers in the C locale whatever the host's locale is: no hexadecimal, no "inf", no "nan".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hundredweight {

/// The integer at the head of a text: white space, a sign and digits; 0 when there is none. Values
/// beyond 32 bits become the nearest 32-bit one.
int32_t ReadInteger(std::string_view text);

/// The decimal number at the head of a text: white space, a sign, digits with a point and an
/// exponent; 0 when there is none.
double ReadDecimal(std::string_view text);

/// A number truncated toward zero; beyond 32 bits the nearest 32-bit value, 0 for no number.
int32_t TruncateToInteger(double value);

/// printf's "%<width>.<decimals>f".
std::string FormatDecimal(double value, int width, int decimals);

/// printf's "%0<width>.<decimals>f".
std::string FormatZeroPadded(double value, int width, int decimals);

/// printf's "%<width>d".
std::string FormatInteger(int32_t value, int width);

/// printf's "%0<width>d".
std::string FormatZeroPadded(int32_t value, int width);

/// printf's "%<width>.0d": nothing but blanks for 0.
std::string FormatNonZero(int32_t value, int width);

/// A text right-aligned in `width` characters, padded on the left with '0'.
std::string ZeroPadText(std::string_view text, int width);

}  // namespace hundredweight
