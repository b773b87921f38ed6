// Paths as texts in UTF-8. On Windows the program's manifest makes that the code page of arguments
// and file names.
#pragma once

#include <filesystem>
#include <string>

namespace cwt {

inline std::filesystem::path PathOf(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

inline std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace cwt
