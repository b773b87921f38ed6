// The rows of a batch, as columns of a data frame.
#pragma once

#include <pybind11/numpy.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bill/bill_columns.h"

namespace cwt {

/// Takes the CSV form of a batch apart. Amounts become whole cents, in columns whose names say so.
class RowColumns {
 public:
    RowColumns();

    /// The row of names that a batch writes where no column is passed on.
    const std::string& header() const { return header_; }

    /// Adds rows without their header; the last may be cut, and goes on with the next text. Throws
    /// std::runtime_error for what is no row, or not the next one.
    void Append(std::string_view text);

    /// How many whole rows there are, and whether nothing is left of a cut one.
    std::uint64_t rows() const { return rows_; }
    bool is_whole() const { return rest_.empty(); }

    /// For each column its name, its kind ("text", "whole", "percent"), and an array of its values;
    /// behind that of numbers one that is true where there is none.
    pybind11::list Take() const;

 private:
    struct RowColumn {
        std::string name;
        ColumnType type;
        pybind11::list texts{};
        std::unordered_map<std::string, pybind11::object> known_texts = {};
        std::vector<std::int64_t> numbers = {};  ///< Cents, and hundredths of a percent.
        std::vector<std::uint8_t> missing = {};
    };

    void AppendRow(std::string_view row);
    static void AppendCell(RowColumn& column, const std::string& cell);

    std::vector<RowColumn> columns_;  ///< But for the first, the row's number.
    std::vector<std::string> fields_;
    std::string header_, rest_;
    std::uint64_t rows_ = 0;
};

}  // namespace cwt
