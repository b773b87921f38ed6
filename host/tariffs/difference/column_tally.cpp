#include "tariffs/difference/column_tally.h"

#include <algorithm>
#include <charconv>

namespace cwt {
namespace {

/// A decimal number, and nothing beside it.
std::optional<double> NumberIn(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    if (text.empty() || error != std::errc() || last != end) return std::nullopt;
    return number;
}

/// A column, or several of one name, while it is counted.
struct Tally {
    ColumnDifference column;
    std::vector<double> steps;
    bool is_alike = true;

    void Add(const std::string& of_old, const std::string& of_new) {
        if (of_old.empty() && of_new.empty()) return;
        ++column.cells;
        if (of_old == of_new) return;
        ++column.changed;
        if (is_alike && !column.alike) {
            column.alike = {of_old, of_new};
        } else if (is_alike && (column.alike->first != of_old || column.alike->second != of_new)) {
            is_alike = false;
            column.alike.reset();
        }
        const auto step = StepOf(column.measure, of_old, of_new);
        if (!step) return;
        ++(step->rose ? column.rose : column.fell);
        step->by ? steps.push_back(*step->by) : void(++column.without_base);
    }

    ColumnDifference Finish() {
        if (steps.empty()) return std::move(column);
        std::ranges::sort(steps);
        column.least = steps.front();
        column.greatest = steps.back();
        const std::size_t middle = steps.size() / 2;
        column.median =
            steps.size() % 2 == 1 ? steps[middle] : (steps[middle - 1] + steps[middle]) / 2;
        return std::move(column);
    }
};

}  // namespace

std::optional<Step> StepOf(ColumnMeasure measure, const std::string& of_old,
                           const std::string& of_new) {
    if (measure == ColumnMeasure::kNone) return std::nullopt;
    const auto before = NumberIn(of_old), now = NumberIn(of_new);
    if (!before || !now || *before == *now) return std::nullopt;
    Step step = {*now > *before, std::nullopt};
    constexpr double kPercent = 100;
    if (measure == ColumnMeasure::kShare) {
        step.by = *now - *before;
    } else if (*before > 0) {
        step.by = (*now - *before) / *before * kPercent;
    }
    return step;
}

std::vector<ColumnDifference> TallyColumns(const SheetDifference& sheet) {
    std::vector<Tally> tallies;
    std::vector<std::size_t> tally_of;  ///< By column.
    for (const ComparedColumn& column : sheet.columns) {
        const std::string group(ColumnGroup(column.name));
        auto found =
            std::ranges::find(tallies, group, [](const Tally& tally) { return tally.column.name; });
        if (found == tallies.end()) {
            tallies.emplace_back();
            found = tallies.end() - 1;
            found->column.name = group;
            found->column.measure = MeasureOf(column.name);
        }
        tally_of.push_back(static_cast<std::size_t>(found - tallies.begin()));
    }
    std::vector<bool> is_counted(sheet.columns.size());
    const std::string nothing;
    for (const RowDifference& row : sheet.rows) {
        if (row.old_number == 0 || row.new_number == 0) continue;
        const std::vector<std::string> old_cells = CellsOf(row.of_old);
        const std::vector<std::string> new_cells =
            row.is_changed ? CellsOf(row.of_new) : std::vector<std::string>();
        for (std::size_t i = 0; i < sheet.columns.size(); ++i) {
            const ComparedColumn& column = sheet.columns[i];
            const std::string& of_old =
                column.in_old < old_cells.size() ? old_cells[column.in_old] : nothing;
            const std::string& of_new = !row.is_changed ? of_old
                                        : column.in_new < new_cells.size()
                                            ? new_cells[column.in_new]
                                            : nothing;
            Tally& tally = tallies[tally_of[i]];
            tally.Add(of_old, of_new);
            if (of_old == of_new || is_counted[i]) continue;
            is_counted[i] = true;
            ++tally.column.columns;
        }
    }
    std::vector<ColumnDifference> columns;
    for (Tally& tally : tallies) {
        if (tally.column.changed > 0) columns.push_back(tally.Finish());
    }
    return columns;
}

}  // namespace cwt
