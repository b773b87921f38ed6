#include "tariffs/difference/row_cells.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/code_page.h"

namespace cwt {
namespace {

constexpr const char* kNothing = "nothing";

/// Cells that are named as one: one, or columns of one kind side by side that hold the same.
struct NamedCells {
    std::string_view first, last;  ///< The columns.
    std::string text;
    std::size_t columns = 1;
    int rank = 0;  ///< What is lower is named first where there is no room for all.
};

std::string_view NumberBehind(std::string_view column) {
    const std::string_view group = ColumnGroup(column);
    return group == column ? "" : column.substr(group.size() + 1);
}

/// Whether one column is numbered next to another: "rate_4" to "rate_3".
bool IsNext(std::string_view before, std::string_view column) {
    const auto value = [](std::string_view number) {
        std::uint64_t read = 0;
        std::from_chars(number.data(), number.data() + number.size(), read);
        return read;
    };
    return !NumberBehind(before).empty() && ColumnGroup(before) == ColumnGroup(column) &&
           value(NumberBehind(before)) + 1 == value(NumberBehind(column));
}

/// "class_map", or "group_1_percent_1-9".
std::string ColumnsText(const NamedCells& cells) {
    std::string name = Printable(std::string(cells.first));
    if (cells.columns == 1) return name;
    return fmt::format("{}-{}", name, NumberBehind(cells.last));
}

/// Of a new or a gone row amounts and percentages say most, lists of codes little, and what is 0
/// least.
int RankOf(std::string_view column, const std::string& cell) {
    enum { kAmountOrShare, kSingle, kOfList, kZero };
    if (cell.find_first_not_of("0.") == cell.npos) return kZero;
    if (MeasureOf(column) != ColumnMeasure::kNone) return kAmountOrShare;
    return ColumnGroup(column) == column ? kSingle : kOfList;
}

std::vector<NamedCells> ChangedCells(const std::vector<CellDifference>& cells) {
    std::vector<NamedCells> named;
    named.reserve(cells.size());
    for (const CellDifference& cell : cells) {
        named.push_back({cell.column, cell.column,
                         ChangeText(MeasureOf(cell.column), cell.of_old, cell.of_new)});
    }
    return named;
}

std::vector<NamedCells> CellsOfOneSide(const std::vector<CellDifference>& cells) {
    std::vector<NamedCells> named;
    std::string before;
    for (const CellDifference& cell : cells) {
        const std::string value = cell.of_old + cell.of_new;
        if (!named.empty() && value == before && IsNext(named.back().last, cell.column)) {
            named.back().last = cell.column;
            ++named.back().columns;
        } else {
            named.push_back(
                {cell.column, cell.column, CellText(value, 0), 1, RankOf(cell.column, value)});
        }
        before = value;
    }
    return named;
}

/// Leaves the first few by their rank, in their order. Result: how many cells are left out.
std::size_t LeaveFirst(std::vector<NamedCells>& named) {
    constexpr std::size_t kCellsNamed = 3;
    if (named.size() <= kCellsNamed) return 0;
    std::vector<int> ranks(named.size());
    std::ranges::transform(named, ranks.begin(), &NamedCells::rank);
    std::ranges::nth_element(ranks, ranks.begin() + kCellsNamed - 1);
    const int last = ranks[kCellsNamed - 1];
    std::size_t room = kCellsNamed;
    for (const NamedCells& cells : named) room -= cells.rank < last ? 1 : 0;
    std::size_t left_out = 0;
    std::erase_if(named, [&](const NamedCells& cells) {
        const bool stays = cells.rank < last || (cells.rank == last && room > 0);
        if (stays && cells.rank == last) --room;
        if (!stays) left_out += cells.columns;
        return !stays;
    });
    return left_out;
}

}  // namespace

std::string CellText(const std::string& cell, std::size_t from) {
    constexpr std::size_t kLongest = 48, kBefore = 8;
    if (cell.empty()) return kNothing;
    const auto continues = [&](std::size_t at) {
        return at < cell.size() && (static_cast<unsigned char>(cell[at]) & 0xC0U) == 0x80;
    };
    std::size_t start = cell.size() <= kLongest || from < kLongest ? 0 : from - kBefore;
    start = std::min(start, cell.size());
    while (continues(start)) --start;
    std::size_t end = std::min(start + kLongest, cell.size());
    while (continues(end)) ++end;
    return fmt::format("{}{}{}", start > 0 ? "..." : "", Printable(cell.substr(start, end - start)),
                       end < cell.size() ? "..." : "");
}

const char* UnitSign(ColumnMeasure measure) {
    return measure == ColumnMeasure::kShare ? "points" : "%";
}

std::string ChangeText(ColumnMeasure measure, const std::string& of_old,
                       const std::string& of_new) {
    const auto differing = std::ranges::mismatch(of_old, of_new);
    const auto from = static_cast<std::size_t>(differing.in1 - of_old.begin());
    std::string text = CellText(of_old, from) + " -> " + CellText(of_new, from);
    const auto step = StepOf(measure, of_old, of_new);
    if (step && step->by) text += fmt::format(" ({:+.2f} {})", *step->by, UnitSign(measure));
    return text;
}

std::string CellsText(const SheetDifference& sheet, const RowDifference& row, bool all) {
    const std::vector<std::string> key = sheet.subject.row_name == nullptr
                                             ? std::vector<std::string>()
                                             : KeyColumns(sheet.subject.row_name);
    std::vector<CellDifference> cells = CellDifferences(sheet, row);
    std::erase_if(cells, [&](const CellDifference& cell) {
        return std::ranges::find(key, cell.column) != key.end();
    });
    std::vector<NamedCells> named = row.is_changed ? ChangedCells(cells) : CellsOfOneSide(cells);
    const std::size_t left_out = all ? 0 : LeaveFirst(named);
    std::string text;
    for (const NamedCells& each : named) {
        text += fmt::format("{}{} {}", text.empty() ? "" : ", ", ColumnsText(each), each.text);
    }
    if (left_out > 0) text += fmt::format(", and {} more", left_out);
    return text;
}

}  // namespace cwt
