#include "text/field_text.h"

#include "text/code_page.h"

namespace cwt {

std::string TextOf(const char* field, std::size_t size) {
    const std::string_view text(field, strnlen(field, size));
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return FromCodePage(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

}  // namespace cwt
