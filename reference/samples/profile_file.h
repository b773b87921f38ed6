// Sample profiles.
#pragma once

#include "reference/samples/file_contents.h"

namespace hundredweight::samples {

/// PROFILE.FIL with the profiles "Default" and "Northeast", in the current layout.
FileContents ProfileFiles();

}  // namespace hundredweight::samples
