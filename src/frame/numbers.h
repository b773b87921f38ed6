// Numbers as fixed-width decimal text. Texts are read from their own characters only, as decimal
// numbers in the C locale whatever the host's locale is: no hexadecimal, no "inf", no "nan". A zero
// byte ends a number as any other character does that is not part of one.
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/inline_text.h"

namespace hundredweight {

/// The integer at the head of a text: white space, a sign and digits; 0 when there is none. Values
/// beyond 32 bits become the nearest 32-bit one.
int32_t ReadInteger(std::string_view text);

/// The decimal number at the head of a text: white space, a sign, digits with a point and an
/// exponent; 0 when there is none.
double ReadDecimal(std::string_view text);

/// The same in single precision; a value beyond its range becomes the nearest in it.
float ReadSingle(std::string_view text);

/// A number truncated toward zero; beyond 32 bits the nearest 32-bit value, 0 for no number.
int32_t TruncateToInteger(double value);

/// A number as text. The longest double has 309 digits before its point.
using NumberText = InlineText<320>;

/// printf's "%<width>.<decimals>f".
NumberText FormatDecimal(double value, int width, int decimals);

/// printf's "%0<width>.<decimals>f".
NumberText FormatZeroPadded(double value, int width, int decimals);

/// printf's "%<width>d".
NumberText FormatInteger(int32_t value, int width);

/// printf's "%0<width>d".
NumberText FormatZeroPadded(int32_t value, int width);

/// printf's "%<width>.0d": nothing but blanks for 0.
NumberText FormatNonZero(int32_t value, int width);

/// A text right-aligned in `width` characters, padded on the left with '0'.
NumberText ZeroPadText(std::string_view text, int width);

}  // namespace hundredweight
