// The rate context as text, a line a field, for those who write hosts.
#pragma once

#include <hundredweight/rate_context.h>

#include <string>

namespace cwt {

/// The bytes of every field, and of the tables that hang on it, in hexadecimal, without their last
/// zeros: numbers are little-endian on every target. Of other blocks, of streams and open files,
/// whose addresses and numbers are the process's own, that they are there. The directories, which
/// are the caller's, are left out.
std::string RecordText(const RateContext& context);

}  // namespace cwt
