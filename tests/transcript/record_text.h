// The rate context as text, a line a field.
#pragma once

#include <hundredweight/rate_context.h>

#include <string>

namespace hundredweight::transcript {

/// The bytes of every field in hexadecimal, without their last zeros: numbers are little-endian on
/// every target. Of blocks, streams and files, whose addresses and numbers are the process's own,
/// whether they are there. The directories, which are the caller's, are left out.
std::string RecordText(const RateContext& context);

}  // namespace hundredweight::transcript
