// A file that the program carries within itself, as cmake/embed.cmake puts it there.
#pragma once

#include <string_view>

namespace cwt {

struct EmbeddedFile {
    std::string_view name;   ///< Without its directory, or within its folder, with slashes.
    std::string_view type;   ///< As HTTP names it.
    std::string_view bytes;  ///< As they lie in the source tree.
};

}  // namespace cwt
