// The reference service guide's files: terminals, points and transit days.
#pragma once

#include "reference/samples/file_contents.h"

namespace hundredweight::samples {

FileContents ServiceGuideFiles();

}  // namespace hundredweight::samples
