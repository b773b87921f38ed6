// Names of temporaries: short, as those of all files here, and no other file's.
#pragma once

#include <string_view>

#include "frame/inline_text.h"

namespace hundredweight::platform {

using TemporaryName = InlineText<12>;

/// A name such as HWT0031P.~K7, of the process and of chance.
TemporaryName MakeTemporaryName();

/// Whether a file's name is of that form.
bool IsTemporaryName(std::string_view name);

}  // namespace hundredweight::platform
