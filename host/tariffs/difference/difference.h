// What changes from one tariff set to another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/difference/difference_side.h"
#include "tariffs/difference/subjects.h"

namespace cwt {

/// A row that is not alike in both. Numbers count from 1; 0 where there is no such row.
struct RowDifference {
    std::string_view of_old, of_new;  ///< As they stand in the sheets.
    std::uint32_t old_number = 0, new_number = 0;
    bool is_changed = false;
    bool is_moved = false;  ///< Against the others.
};

/// A column, with where it stands in each sheet; npos: nowhere.
struct ComparedColumn {
    std::string name;
    std::size_t in_old, in_new;
};

/// What the rows that are in both have otherwise in a column, or in several of one name.
struct ColumnDifference {
    std::string name;
    ColumnMeasure measure;
    std::size_t columns = 0;  ///< In which something changed.
    std::size_t cells = 0;    ///< That hold something in either.
    std::size_t changed = 0;  ///< Of them.
    std::size_t rose = 0, fell = 0;
    std::size_t without_base = 0;  ///< Rose or fell from an amount that is not above 0.
    /// Percent or points of those that rose and fell, but for those without a base.
    double least = 0, median = 0, greatest = 0;
    /// What all changed from and to, when that is the same.
    std::optional<std::pair<std::string, std::string>> alike;
};

struct SheetDifference {
    std::string name;
    Subject subject;
    bool is_read = true;  ///< Otherwise it is no part of the set.
    bool is_in_old = true, is_in_new = true;
    std::size_t old_rows = 0, new_rows = 0;
    std::vector<ComparedColumn> columns;
    std::size_t changed = 0, added = 0, gone = 0, moved = 0;
    std::vector<RowDifference> rows;  ///< In the order of the new sheet, those gone behind.
    std::vector<ColumnDifference> column_differences;

    bool is_alike() const;
};

/// A file that is no part of either set.
struct FileDifference {
    std::string name;
    std::optional<std::size_t> old_size, new_size;  ///< Bytes; nothing where there is no such file.
};

/// Rows are of the texts of the sides.
struct Difference {
    Difference() = default;
    Difference(Difference&&) = default;
    Difference& operator=(Difference&&) = default;

    DifferenceSide of_old, of_new;
    std::vector<SheetDifference> sheets;  ///< Those that are not alike.
    std::vector<FileDifference> files;    ///< Those that are not alike.
    /// Others that are not compared, since one side is a directory and one a folder.
    std::vector<std::string> not_compared;

    /// Whether the tariff is the same; other files say nothing of it.
    bool is_alike() const { return of_old.set == of_new.set && sheets.empty(); }
};

Difference DifferenceOf(DifferenceSide of_old, DifferenceSide of_new);

/// The cells of a row.
std::vector<std::string> CellsOf(std::string_view row);

/// The columns that a row's name has in braces, in their order.
std::vector<std::string> KeyColumns(const char* row_name);

/// The name of a row by its columns; the cells are those of the old sheet or of the new.
std::string RowName(const SheetDifference& sheet, const RowDifference& row);

/// A cell that changed.
struct CellDifference {
    std::string column, of_old, of_new;
};
std::vector<CellDifference> CellDifferences(const SheetDifference& sheet, const RowDifference& row);

/// How far a number rose or fell: percent or points.
struct Step {
    bool rose;
    std::optional<double> by;  ///< Nothing without a base.
};
/// Nothing for what are no two different numbers.
std::optional<Step> StepOf(ColumnMeasure measure, const std::string& of_old,
                           const std::string& of_new);

/// As people read it. Rows beyond the first few are counted, unless all are asked for.
std::string DifferenceText(const Difference& difference, bool all);
/// The same as a document, hundredweight/difference/1.
std::string DifferenceJson(const Difference& difference, bool all);

/// Rows of one kind that are named where not all are.
inline constexpr std::size_t kRowsNamed = 5;

}  // namespace cwt
