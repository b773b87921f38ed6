#include "tariffs/field.h"

#include <fmt/core.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "tariffs/carried_text.h"
#include "tariffs/decimal_text.h"
#include "text/code_page.h"

namespace cwt {
namespace {

template <class Number>
Number NumberOf(std::string_view bytes) {
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

/// The text of bytes that keep the field's rule; what it gives for others does not come back.
std::string RuleText(const Field& field, std::string_view bytes) {
    switch (field.kind) {
        case Kind::kText:
        case Kind::kPostal:
        case Kind::kCode:
            return FromCodePage(WithoutPadding(bytes, field.padding));
        case Kind::kRight: {
            const std::size_t start = std::min(bytes.find_first_not_of(' '), bytes.size());
            // What is not aligned to the right is told by its padding.
            return FromCodePage(bytes.ends_with(' ') && start < bytes.size() ? bytes
                                                                             : bytes.substr(start));
        }
        case Kind::kFlag:
            if (bytes == "Y") return "yes";
            if (bytes == "N") return "no";
            return FromCodePage(WithoutPadding(bytes, ' '));
        case Kind::kInt:
            return field.width == 2 ? fmt::format("{}", NumberOf<std::int16_t>(bytes))
                                    : fmt::format("{}", NumberOf<std::int32_t>(bytes));
        case Kind::kUnsigned:
            return field.width == 2 ? fmt::format("{}", NumberOf<std::uint16_t>(bytes))
                                    : fmt::format("{}", NumberOf<std::uint32_t>(bytes));
        case Kind::kFloat:
        case Kind::kDollars:
        case Kind::kCents: {
            const auto number = NumberOf<float>(bytes);
            if (!std::isfinite(number)) return HexOf(bytes);
            if (field.kind == Kind::kFloat) return FloatText(number);
            return field.kind == Kind::kDollars ? DollarsText(number, 0) : DollarsText(number, -2);
        }
        case Kind::kDate:
            return fmt::format("{}-{}-{}", bytes.substr(0, 4), bytes.substr(4, 2), bytes.substr(6));
    }
    return {};
}

}  // namespace

std::vector<Column> ColumnsOf(std::span<const Field> fields) {
    std::vector<Column> columns;
    for (const Field& field : fields) {
        for (std::size_t i = 0; i < field.count; ++i) {
            columns.push_back({field.count == 1 ? std::string(field.name)
                                                : fmt::format("{}_{}", field.name, i + 1),
                               &field, field.offset + i * field.width});
        }
    }
    return columns;
}

bool IsText(Kind kind) {
    return kind == Kind::kText || kind == Kind::kPostal || kind == Kind::kCode ||
           kind == Kind::kRight;
}

char PaddingOf(const Field& field) {
    if (IsText(field.kind)) return field.padding;
    return field.kind == Kind::kFlag || field.kind == Kind::kDate ? ' ' : '\0';
}

std::string_view WithoutPadding(std::string_view bytes, char padding) {
    const std::size_t last = bytes.find_last_not_of(padding);
    return bytes.substr(0, last == bytes.npos ? 0 : last + 1);
}

bool IsHosts(const Field& field) {
    const std::string_view name = field.name;
    return name.starts_with("host_") || name.starts_with("saved_") || name.starts_with("reserved_");
}

bool IsLeftOut(const Field& field, std::string_view bytes) {
    if (field.is_needed || bytes != BytesOfNothing(field)) return false;
    return IsText(field.kind) || field.kind == Kind::kFlag || field.kind == Kind::kDate ||
           IsHosts(field);
}

std::string FieldText(const Field& field, std::string_view bytes) {
    std::string text = RuleText(field, bytes);
    const FieldBytes back = BytesOfText(field, text);
    if (back.bytes == bytes && back.problem.empty()) return text;
    return HexOf(WithoutPadding(bytes, PaddingOf(field)));
}

std::string BytesOfNothing(const Field& field) {
    return std::string(field.width, PaddingOf(field));
}

}  // namespace cwt
