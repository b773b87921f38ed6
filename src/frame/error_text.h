// The messages that belong to the error codes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hundredweight {

/// Room for a message or a caller's own text, terminator included.
inline constexpr std::size_t kMessageSize = 180;

/// Writes the message of `code`, terminated, into a buffer of at least kMessageSize bytes whose
/// first byte is 0. A code without a message of its own gives "Error occurred.".
void GetErrorText(int32_t code, char* buffer);

}  // namespace hundredweight
