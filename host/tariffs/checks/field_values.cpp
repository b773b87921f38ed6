#include "tariffs/checks/field_values.h"

#include <charconv>

namespace cwt {
namespace {

template <class Number>
std::optional<Number> NumberIn(std::string_view bytes, std::string_view characters) {
    const std::string_view text = Trimmed(bytes);
    if (text.empty()) return Number{};
    if (text.find_first_not_of(characters) != text.npos) return std::nullopt;
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

std::string_view Trimmed(std::string_view bytes) {
    std::string_view text = bytes.substr(0, bytes.find('\0'));
    const std::size_t first = text.find_first_not_of(' ');
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::optional<double> DecimalIn(std::string_view bytes) {
    return NumberIn<double>(bytes, "-.0123456789");
}

std::optional<int> WholeIn(std::string_view bytes) {
    return NumberIn<int>(bytes, "-0123456789");
}

}  // namespace cwt
