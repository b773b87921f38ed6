#include "commands/value_kinds.h"

#include <cstddef>

namespace cwt {

bool WantsValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

bool IsList(const CLI::Option& option) {
    return option.get_expected_max() >= CLI::detail::expected_max_vector_size;
}

std::string ValueKindOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

std::vector<std::string> ChoicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t begin = type.find(":{");
    if (begin == type.npos || !type.ends_with('}')) return {};
    return CLI::detail::split(type.substr(begin + 2, type.size() - begin - 3), ',');
}

}  // namespace cwt
