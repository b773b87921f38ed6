#include "text/field_text.h"

#include <fmt/core.h>

#include "session/failure.h"

namespace cwt {

std::string TextOf(const char* field, std::size_t size) {
    const std::string_view text(field, strnlen(field, size));
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

void RequireRoom(std::string_view what, std::string_view text, std::size_t room) {
    if (text.size() <= room) return;
    throw Broken(fmt::format("{}: \"{}\" is longer than {} characters", what, text, room));
}

}  // namespace cwt
