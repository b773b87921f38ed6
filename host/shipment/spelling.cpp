#include "shipment/spelling.h"

#include <fmt/format.h>

namespace cwt {
namespace {

/// What characters are, a letter each: 9 a digit, A a letter, the others themselves.
std::string ShapeOf(std::string_view text) {
    std::string shape(text);
    for (char& character : shape) {
        if (character >= '0' && character <= '9') character = '9';
        if (character >= 'A' && character <= 'Z') character = 'A';
    }
    return shape;
}

}  // namespace

std::string_view WithoutBlanksAround(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    for (char& character : upper) {
        if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 32);
    }
    return upper;
}

std::string SpellPostalCode(std::string_view written) {
    std::string code = UpperCase(WithoutBlanksAround(written));
    const std::string shape = ShapeOf(code);
    if (shape == "99999-9999" || shape == "99999 9999" || shape == "999999999")
        return code.substr(0, 5);
    if (shape == "A9A 9A9" || shape == "A9A-9A9") return code.substr(0, 3) + code.substr(4);
    if (shape == "99999 A" && code.back() == 'M') return code.substr(0, 5) + 'M';
    return code;
}

std::string SpellZipNumber(int64_t number) {
    return number < 0 ? fmt::to_string(number) : fmt::format("{:05}", number);
}

std::string SpellClass(std::string_view written) {
    const std::string_view code = WithoutBlanksAround(written);
    if (code == "77.5" || code == "92.5") return std::string(code.substr(0, 2));
    return std::string(code);
}

}  // namespace cwt
