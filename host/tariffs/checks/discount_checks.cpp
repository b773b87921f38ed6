// Discounts: the groups of the discount file and of profiles, and the profiles' by postal codes.
#include <map>

#include "tariffs/checks/discount_terms.h"
#include "tariffs/checks/field_values.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

void CheckGroups(CheckedSet& set) {
    const Table groups = set.TableOf("DIS", "discount-groups.csv");
    for (std::size_t row = 0; row < groups.size(); ++row) CheckDiscountTerms(set, groups, row);
}

void CheckProfileGroups(CheckedSet& set) {
    const Table profiles = set.TableOf("PROFILE.FIL");
    for (std::size_t row = 0; row < profiles.size(); ++row) CheckDiscountTerms(set, profiles, row);
}

void CheckGroupSelector(CheckedSet& set) {
    const Table discounts = set.TableOf("DIS");
    if (discounts.size() == 0) return;
    const Column& selector = discounts.column("group_selector");
    const char chosen = discounts.bytes(0, selector).front();
    if ('1' <= chosen && chosen <= '5') return;
    set.Doubt(discounts, 0, selector,
              "is none of 1 to 5: every shipment has the first group; 1 says so");
}

bool IsMarked(const Table& weights, std::size_t row) {
    const char mark = weights.bytes(row, weights.column("mark")).front();
    return mark != ' ' && mark != '\0';
}

/// The columns that count: those before the first that is not marked.
std::size_t CountOfWeightColumns(const Table& weights) {
    std::size_t count = 0;
    while (count < weights.size() && IsMarked(weights, count)) ++count;
    return count;
}

void CheckWeightColumns(CheckedSet& set) {
    const Table weights = set.TableOf("DIS", "discount-weights.csv");
    const Column& lowest = weights.column("lowest_pounds");
    const std::size_t count = CountOfWeightColumns(weights);
    for (std::size_t row = 0; row < weights.size(); ++row) {
        const auto pounds = DecimalIn(weights.bytes(row, lowest));
        if (row > count && IsMarked(weights, row)) {
            set.Doubt(weights, row, weights.column("mark"),
                      "marks column {}, which does not count: column {} has no mark and ends them",
                      row + 1, count + 1);
        } else if (row >= count && !IsMarked(weights, row) && pounds != 0) {
            set.Doubt(weights, row, lowest, "does not count: the column has no mark");
        } else if (!pounds) {
            set.Doubt(weights, row, lowest, "is no number of pounds");
        } else if (row > 0 && row < count &&
                   *pounds <= DecimalIn(weights.bytes(row - 1, lowest)).value_or(-1)) {
            set.DoubtAgainst(weights, row, lowest, row - 1,
                             "is not above that of the column before it: columns ascend");
        }
    }
}

/// A percentage holds in the weight break of its number, whatever weight its column names.
void CheckColumnsAgainstBreaks(CheckedSet& set) {
    const Table weights = set.TableOf("DIS", "discount-weights.csv");
    const Table breaks = set.TableOf("WGT");
    const Column& lowest = weights.column("lowest_pounds");
    if (breaks.size() == 0) return;
    for (std::size_t row = 0; row < CountOfWeightColumns(weights); ++row) {
        if (row >= breaks.size()) {
            set.Doubt(weights, row, lowest,
                      "belongs to weight break {}, and weight-breaks.csv has {}: its percentages "
                      "hold where the engine has a break of that number",
                      row + 1, breaks.size());
            continue;
        }
        const auto begin = WholeIn(breaks.bytes(row, breaks.column("lowest_pounds")));
        const auto pounds = DecimalIn(weights.bytes(row, lowest));
        // The first break begins with the first pound, or with none.
        const bool is_start = row == 0 && begin && pounds && *begin <= 1 && *pounds <= 1;
        if (begin && pounds && *pounds != *begin && !is_start) {
            set.Doubt(weights, row, lowest,
                      "is not {}, where weight break {} begins: the column's percentages hold "
                      "from there",
                      *begin, row + 1);
        }
    }
}

void CheckPercentsWithoutColumn(CheckedSet& set, const Table& table, std::size_t row,
                                std::size_t weight_columns) {
    std::map<std::string_view, std::size_t> numbers;
    for (const Column& column : table.columns) {
        const std::string_view name = column.field->name;
        if (!name.ends_with("percent") || column.field->count == 1) continue;
        const std::size_t number = ++numbers[name];
        if (number <= weight_columns || TermIn(column, table.bytes(row, column)) == 0) continue;
        set.Doubt(table, row, column,
                  "never holds: it is for weight column {}, and discount-weights.csv has {}",
                  number, weight_columns);
    }
}

void CheckPercentsWithoutColumn(CheckedSet& set) {
    const std::size_t count = CountOfWeightColumns(set.TableOf("DIS", "discount-weights.csv"));
    const Table groups = set.TableOf("DIS", "discount-groups.csv");
    for (std::size_t row = 0; row < groups.size(); ++row) {
        CheckPercentsWithoutColumn(set, groups, row, count);
    }
    // A profile takes the place of the first two groups.
    const Table profiles = set.TableOf("PROFILE.FIL");
    const Column& takes_groups = profiles.column("discount_file");
    for (std::size_t row = 0; row < profiles.size() && groups.size() > 0; ++row) {
        if (BinaryIn<std::int16_t>(profiles.bytes(row, takes_groups)) == 0) continue;
        CheckPercentsWithoutColumn(set, profiles, row, count);
    }
}

constexpr SetCheck kDiscountCheckList[] = {
    CheckGroups,        CheckProfileGroups,        CheckGroupSelector,
    CheckWeightColumns, CheckColumnsAgainstBreaks, CheckPercentsWithoutColumn};

}  // namespace

constinit const std::span<const SetCheck> kDiscountChecks(kDiscountCheckList);

}  // namespace cwt
