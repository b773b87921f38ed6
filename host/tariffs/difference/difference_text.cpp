#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "tariffs/difference/difference.h"
#include "tariffs/difference/row_cells.h"
#include "text/code_page.h"
#include "text/grouped.h"

namespace cwt {
namespace {

std::string Counted(std::size_t count) {
    return Grouped(fmt::to_string(count));
}

std::string CountOf(std::size_t count, const char* noun) {
    return fmt::format("{} {}{}", Counted(count), noun, count == 1 ? "" : "s");
}

bool IsOnlyMoved(const RowDifference& row) {
    return row.is_moved && !row.is_changed;
}

std::string RowText(const SheetDifference& sheet, const RowDifference& row, const char* word,
                    bool all) {
    std::string name = Printable(RowName(sheet, row));
    if (sheet.subject.row_name != nullptr && KeyColumns(sheet.subject.row_name).empty()) {
        name += fmt::format(" {}", row.new_number != 0 ? row.new_number : row.old_number);
    }
    std::vector<std::string> parts;
    if (!name.empty()) parts.push_back(name);
    if (IsOnlyMoved(row)) {
        const std::size_t end = row.of_new.find_last_not_of("\r\n") + 1;
        if (name.empty()) parts.push_back(CellText(std::string(row.of_new.substr(0, end)), 0));
    } else if (std::string cells = CellsText(sheet, row, all); !cells.empty()) {
        parts.push_back(std::move(cells));
    }
    std::string text = fmt::format("    {:<8}{}", word, fmt::join(parts, ": "));
    if (row.is_moved) {
        text += fmt::format("; row {}, was {}", Counted(row.new_number), Counted(row.old_number));
    }
    return text + '\n';
}

/// "by 4.85 to 5.00 %, median 4.90 %"; with signs when some rose and some fell.
std::string StepsText(const ColumnDifference& column) {
    const char* const unit = UnitSign(column.measure);
    const bool rose_alone = column.least >= 0, fell_alone = column.greatest <= 0;
    const auto number = [&](double by) {
        return rose_alone || fell_alone ? fmt::format("{:.2f}", std::abs(by))
                                        : fmt::format("{:+.2f}", by);
    };
    std::string least = number(column.least), greatest = number(column.greatest);
    if (least == greatest) return fmt::format("by {} {}", least, unit);
    if (!rose_alone && fell_alone) std::swap(least, greatest);
    return fmt::format("by {} to {} {}, median {} {}", least, greatest, unit, number(column.median),
                       unit);
}

/// What so many of a column's cells did.
std::string ColumnText(const ColumnDifference& column) {
    const std::size_t stepped = column.rose + column.fell;
    std::vector<std::string> parts;
    const auto add = [&](std::size_t count, const char* word) {
        if (count == 0) return;
        const std::string of = parts.empty() ? " of " + Counted(column.cells) : "";
        parts.push_back(fmt::format("{}{} {}", Counted(count), of, word));
    };
    add(column.rose, "rose");
    add(column.fell, "fell");
    add(column.changed - stepped, stepped == 0 ? "changed" : "changed otherwise");
    if (column.alike) {
        const auto& [of_old, of_new] = *column.alike;
        parts.push_back("all " + ChangeText(column.measure, of_old, of_new));
    } else if (stepped > column.without_base) {
        parts.push_back(StepsText(column));
    }
    if (column.without_base > 0) {
        parts.push_back(Counted(column.without_base) + " of them from no amount above 0");
    }
    const std::string columns =
        column.columns > 1 ? fmt::format(" ({} columns)", column.columns) : "";
    return fmt::format("  {}{}: {}\n", Printable(column.name), columns, fmt::join(parts, ", "));
}

/// Each changed key of a section.
std::string SectionText(const SheetDifference& sheet) {
    std::string text;
    for (const RowDifference& row : sheet.rows) {
        for (const CellDifference& cell : CellDifferences(sheet, row)) {
            text += fmt::format("  {}: {}\n", Printable(cell.column),
                                ChangeText(MeasureOf(cell.column), cell.of_old, cell.of_new));
        }
    }
    return text;
}

/// The rows of each kind, or the first of them.
std::string RowsText(const SheetDifference& sheet, bool all) {
    struct Kind {
        const char* word;
        bool (*has)(const RowDifference& row);
    };
    constexpr Kind kKinds[] = {
        {"changed", [](const RowDifference& row) { return row.is_changed; }},
        {"new", [](const RowDifference& row) { return row.old_number == 0; }},
        {"gone", [](const RowDifference& row) { return row.new_number == 0; }},
        {"moved", IsOnlyMoved},
    };
    std::string text;
    for (const Kind& kind : kKinds) {
        std::size_t count = 0;
        for (const RowDifference& row : sheet.rows) {
            if (!kind.has(row)) continue;
            if (all || count < kRowsNamed) text += RowText(sheet, row, kind.word, all);
            ++count;
        }
        if (!all && count > kRowsNamed) {
            text += fmt::format("    and {} more {}; --all names them\n",
                                Counted(count - kRowsNamed), kind.word);
        }
    }
    return text;
}

std::string CountsText(const SheetDifference& sheet) {
    std::string text;
    const auto add = [&](std::size_t count, const char* word) {
        if (count > 0)
            text += fmt::format("{}{} {}", text.empty() ? "" : ", ", Counted(count), word);
    };
    add(sheet.changed, "changed");
    add(sheet.added, "new");
    add(sheet.gone, "gone");
    add(sheet.moved, "moved");
    return text;
}

std::string SheetText(const SheetDifference& sheet, bool all) {
    const bool is_section = sheet.name.starts_with(kSectionMark);
    std::string text = "\n";
    if (!sheet.subject.words.empty()) text += sheet.subject.words + ", ";
    text += Printable(sheet.name) + (sheet.is_read ? "" : ", which nobody reads");
    if (!sheet.is_in_old || !sheet.is_in_new) {
        text += fmt::format(": {}", sheet.is_in_new ? "only in NEW" : "only in OLD");
    }
    text += '\n';
    if (is_section) return text + SectionText(sheet);
    text += fmt::format("  {} in OLD, {} in NEW", CountOf(sheet.old_rows, "row"),
                        Counted(sheet.new_rows));
    const std::string counts = CountsText(sheet);
    text += (counts.empty() ? "" : ": ") + counts + '\n';
    if (sheet.moved > 0 && sheet.subject.order == Order::kFirstFits) {
        text += "  The first row that fits holds, so that the order counts.\n";
    }
    for (const ComparedColumn& column : sheet.columns) {
        const bool in_old = column.in_old != std::string::npos;
        if (in_old && column.in_new != std::string::npos) continue;
        text +=
            fmt::format("  the column {} is {}\n", Printable(column.name), in_old ? "gone" : "new");
    }
    if (sheet.changed > 1) {
        for (const ColumnDifference& column : sheet.column_differences) text += ColumnText(column);
    }
    return text + RowsText(sheet, all);
}

std::string FilesText(const Difference& difference, bool all) {
    std::string text;
    if (!difference.files.empty()) {
        text += "\nfiles that are no part of the set\n";
        for (const FileDifference& file : difference.files) {
            text += fmt::format("  {}: ", Printable(file.name));
            if (!file.old_size || !file.new_size) {
                text += fmt::format("only in {}\n", file.new_size ? "NEW" : "OLD");
            } else {
                text += fmt::format("other bytes, {}, {} before\n", Counted(*file.new_size),
                                    Counted(*file.old_size));
            }
        }
    }
    if (!difference.not_compared.empty()) {
        text += fmt::format(
            "\nnot compared, since they are no part of the set, and one side is a folder of text: "
            "{}\n",
            CountOf(difference.not_compared.size(), "file"));
        for (const std::string& name : difference.not_compared) {
            if (all) text += fmt::format("  {}\n", Printable(name));
        }
    }
    return text;
}

}  // namespace

std::string DifferenceText(const Difference& difference, bool all) {
    const DifferenceSide &of_old = difference.of_old, &of_new = difference.of_new;
    std::string text = "TARIFF DIFFERENCE\n\n";
    for (const auto& [name, side] : {std::pair{"OLD", &of_old}, {"NEW", &of_new}}) {
        text += fmt::format("  {}  {}, set {}\n", name, Printable(side->path), side->set);
    }
    if (difference.is_alike()) text += "\nThe tariff is the same.\n";
    if (of_old.set != of_new.set) {
        text += fmt::format("\nname of the set: {} -> {}\n", of_old.set, of_new.set);
    }
    for (const SheetDifference& sheet : difference.sheets) text += SheetText(sheet, all);
    return text + FilesText(difference, all);
}

}  // namespace cwt
