// Rows that travel together from the input to a worker.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cwt {

struct Block {
    std::uint64_t first_row = 1;
    std::vector<std::uint32_t> lengths;  ///< Of each row, with its line end.
    std::string text;                    ///< The rows behind one another.
    std::uint64_t digest = 0;       ///< Of the input's rows up to here, as RowSource reckons it.
    std::uint64_t input_bytes = 0;  ///< Bytes of the input up to here, packed ones if it is.

    std::uint64_t next_row() const { return first_row + lengths.size(); }
};

}  // namespace cwt
