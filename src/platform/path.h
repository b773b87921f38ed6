// The parts of a path. Slash and backslash separate directories and a drive letter is understood
// on every system.
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/inline_text.h"

namespace hundredweight::platform {

/// A path as the system is asked for it. Links may lead to longer ones than the library builds.
inline constexpr std::size_t kLongestSystemPath = 1023;
using SystemPath = InlineText<kLongestSystemPath>;

struct PathParts {
    std::string_view drive;      ///< "C:" or empty.
    std::string_view directory;  ///< With its last separator, or empty.
    std::string_view base_name;  ///< Up to the last dot of the file name.
    std::string_view extension;  ///< From the last dot on, or empty.
};

/// Whether two names are the same where case does not tell. ASCII letters alone have a case,
/// whatever the host's locale is.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

PathParts SplitPathParts(std::string_view path);

}  // namespace hundredweight::platform
