// The exported functions as an input calls them.
#pragma once

#include <string>
#include <string_view>

#include "harness.h"

namespace hundredweight::fuzz {

/// Makes the calls that a part's content names: a byte for the function, by its place in the order
/// of the names, and its arguments behind it. Each buffer of an argument is exactly as long as the
/// function's description asks for.
void MakeCalls(Record& record, std::string_view content);

/// The content that makes a call with the arguments' bytes.
std::string CallBytes(std::string_view function, std::string_view arguments = "");

}  // namespace hundredweight::fuzz
