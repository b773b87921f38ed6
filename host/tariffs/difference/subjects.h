// What the sheets of a folder are about: how their rows are told apart and called.
#pragma once

#include <string>
#include <string_view>

namespace cwt {

/// Whether rows may change places.
enum class Order {
    kCounts,     ///< The order says something.
    kFirstFits,  ///< The first row that fits holds.
    kFree,       ///< It says nothing.
};

struct Subject {
    std::string words;  ///< In the words of the trade.
    /// A row's name, with its key columns in braces: "scale {scale}". Without any, the number of
    /// the row is its key. Null: the whole row is.
    const char* row_name = nullptr;
    Order order = Order::kCounts;
};

/// The subject of a sheet, by its name.
Subject SubjectOf(std::string_view sheet);

/// What the numbers of a column are, by its name.
enum class ColumnMeasure {
    kNone,    ///< No numbers, or codes: nothing that rises and falls.
    kAmount,  ///< Changes of it are told in percent.
    kShare,   ///< Percentages, whose changes are told in points.
};
ColumnMeasure MeasureOf(std::string_view column);

/// Columns that hold one thing at several places go by one name: "rate_3" by "rate".
std::string_view ColumnGroup(std::string_view column);

}  // namespace cwt
