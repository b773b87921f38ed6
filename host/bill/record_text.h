// The rate context as text, a line a field, for those who write hosts.
#pragma once

#include <hundredweight/rate_context.h>

#include <string>

namespace cwt {

/// Every field that is set, and the tables that hang on it, as bytes in hexadecimal without
/// trailing zeros; numbers are little-endian on every target. For other blocks, streams and open
/// files, whose addresses and numbers differ from process to process, only "there". The two
/// directories are left out.
std::string RecordText(const RateContext& context);

}  // namespace cwt
