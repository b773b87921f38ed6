// Files that the user's changes are written back to.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>
#include <string_view>

#include "tariff/data_file.h"

namespace hundredweight {

struct WriteCodes {
    int32_t cannot_create;
    int32_t cannot_write;
};

/// Replaces a file's content as a whole; an empty path cannot be created. Result: 1, or 0 with a
/// code and the old content in place.
int32_t WriteFile(RateContext& context, const PathText& path, std::string_view content,
                  const WriteCodes& codes);

}  // namespace hundredweight
