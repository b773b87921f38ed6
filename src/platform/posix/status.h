// The state of a file in what the system tells of it.
#pragma once

#include <sys/stat.h>

#include "platform/file_state.h"

namespace hundredweight::platform {

FileState StateIn(const struct stat& status);

}  // namespace hundredweight::platform
