#include "tariffs/checks/discount_terms.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "tariffs/checks/field_values.h"

namespace cwt {
namespace {

constexpr float kMostPercent = 99.99F;
constexpr float kMostDollars = 999.99F;

/// Whether any of the percentages by weight break is given, of those that are called so.
bool HasPercents(const Table& table, std::size_t row, std::string_view name) {
    return std::ranges::any_of(table.columns, [&](const Column& column) {
        return column.field->name == name && TermIn(column, table.bytes(row, column)) > 0;
    });
}

/// An engine is sent both.
void CheckFlatPercent(CheckedSet& set, const Table& table, std::size_t row, const Column& flat) {
    const Table settings = set.TableOf("SET");
    if (settings.size() > 0 && settings.bytes(0, settings.column("no_flat_discount")) == "Y")
        return;
    std::string percents(flat.field->name);
    percents.erase(percents.find("flat_"), std::string_view("flat_").size());
    if (!HasPercents(table, row, percents)) return;
    set.Doubt(table, row, flat,
              "stands beside percentages by weight break: the engine is sent both, and the "
              "reference engine gives the flat one alone; leave one of the two at 0");
}

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
        } else if (name.ends_with("flat_percent") && *number > 0) {
            CheckFlatPercent(set, table, row, column);
        } else if (!is_percent && !(*number >= 0 && *number <= kMostDollars)) {
            set.Doubt(table, row, column,
                      "is no minimum charge of a discount: these go from 0, for none, to 999.99 "
                      "dollars");
        }
    }
}

}  // namespace cwt
