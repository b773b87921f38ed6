// Names of temporaries: short, as those of all files here, and no other file's.
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/inline_text.h"
#include "platform/file.h"

namespace hundredweight::platform {

using TemporaryName = InlineText<12>;

/// A name such as HWT0031P.~K7, of the process, its machine and chance.
TemporaryName MakeTemporaryName(uint32_t process = ProcessNumber());

/// Whether a file bears the name of a temporary that nobody finishes any more: its process has
/// ended on this machine, is this one while it alone writes there or, whosever it is, it has not
/// been changed for an hour.
bool IsAbandoned(std::string_view name, int64_t seconds_unchanged, bool alone);

}  // namespace hundredweight::platform
