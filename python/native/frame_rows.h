// The shipments of a data frame as rows of a CSV table.
#pragma once

#include <pybind11/numpy.h>

#include <cstddef>
#include <string>
#include <vector>

#include "batch/block.h"

namespace cwt {

class FrameRows {
 public:
    /// The columns that are read, each an array of as many objects as there are rows, and the rows'
    /// labels.
    FrameRows(std::vector<std::string> names, const std::vector<pybind11::array>& columns,
              pybind11::object index);

    std::size_t size() const { return size_; }

    /// The row of names, with its line end.
    std::string Header() const;

    /// Rows from `begin` on, at most so many that a block stays small. Throws, with the column's
    /// name and the row's label, pybind11::type_error for what is no cell of a table and
    /// pybind11::value_error for a row that is too long for one.
    Block BlockFrom(std::size_t begin) const;

 private:
    struct FrameColumn {
        std::string name;
        pybind11::array cells;
    };

    std::string PlaceOf(std::size_t row) const;
    [[noreturn]] void RefuseLength(std::size_t row) const;

    std::vector<FrameColumn> columns_;
    pybind11::object index_;
    std::size_t size_ = 0;
};

}  // namespace cwt
