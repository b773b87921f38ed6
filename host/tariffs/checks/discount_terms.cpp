#include "tariffs/checks/discount_terms.h"

#include <cmath>

#include "tariffs/checks/field_values.h"

namespace cwt {
namespace {

constexpr float kMostPercent = 99.99F;
constexpr float kMostDollars = 999.99F;

}  // namespace

std::optional<float> TermIn(const Column& column, std::string_view bytes) {
    if (column.field->kind == Kind::kFloat) {
        const auto number = BinaryIn<float>(bytes);
        return std::isfinite(number) ? std::optional(number) : std::nullopt;
    }
    const auto number = DecimalIn(bytes);
    return number ? std::optional(static_cast<float>(*number)) : std::nullopt;
}

void CheckDiscountTerms(CheckedSet& set, const Table& table, std::size_t row) {
    for (const Column& column : table.columns) {
        const std::string_view name = column.field->name;
        const bool is_discount = name.starts_with("group_") || column.field->kind == Kind::kRight;
        const bool is_percent = name.ends_with("percent");
        if (!is_discount || (!is_percent && !name.ends_with("floor_dollars"))) continue;
        const auto number = TermIn(column, table.bytes(row, column));
        if (!number) {
            set.Doubt(table, row, column,
                      "is no number: what its first digits give is read, and 0 without any");
        } else if (is_percent && !(*number >= 0 && *number <= kMostPercent)) {
            set.Doubt(table, row, column, "is no discount: the engine is sent 0 to 99.99 percent");
        } else if (!is_percent && !(*number >= 0 && *number <= kMostDollars)) {
            set.Doubt(table, row, column,
                      "is no minimum charge of a discount: these go from 0, for none, to 999.99 "
                      "dollars");
        }
    }
}

}  // namespace cwt
