#include "platform/path.h"

#include <algorithm>

namespace hundredweight::platform {
namespace {

char ToUpper(char character) {
    const bool lower = character >= 'a' && character <= 'z';
    return lower ? static_cast<char>(character - 'a' + 'A') : character;
}

}  // namespace

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToUpper(x) == ToUpper(y); });
}

PathParts SplitPathParts(std::string_view path) {
    PathParts parts;
    if (path.size() >= 2 && path[1] == ':') {
        parts.drive = path.substr(0, 2);
        path.remove_prefix(2);
    }
    // npos + 1 is 0: no separator, no directory.
    const std::size_t name_at = path.find_last_of("/\\") + 1;
    parts.directory = path.substr(0, name_at);
    const std::string_view name = path.substr(name_at);
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    parts.base_name = name.substr(0, dot);
    parts.extension = name.substr(dot);
    return parts;
}

}  // namespace hundredweight::platform
