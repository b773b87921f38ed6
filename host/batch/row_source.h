// The input of a batch, cut into rows.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/block.h"
#include "files/bytes_in.h"
#include "shipment/shipment_reader.h"

namespace cwt {

enum class Form { kNdjson, kCsv, kDatabase };

/// Cuts an input into blocks, which depend on nothing but its bytes and where one begins.
class RowSource {
 public:
    /// Reads the header of a CSV input. Throws std::runtime_error, with the reason, for one that
    /// cannot be relied on, and for an input that cannot be read.
    RowSource(const std::string& name, Form form, const std::vector<std::string>& allowed);

    ShipmentReader& reader() { return *reader_; }

    /// The header of a CSV input, empty for another.
    const std::string& header() const { return header_; }

    /// How many rows so far were of more than one line, as cells in quotes may be.
    struct RowsOfLines {
        std::uint64_t rows = 0, first = 0;
    };
    const RowsOfLines& rows_of_lines() const { return rows_of_lines_; }

    /// Leaves out rows up to this one. Result: their digest, as Block has it. Throws
    /// std::runtime_error when there are not that many.
    std::uint64_t SkipTo(std::uint64_t row);

    /// The next block, of rows before `end_row` alone; nothing when there is none, or when the
    /// program was asked to stop.
    std::optional<Block> Next(std::uint64_t end_row);

 private:
    bool NextRow(std::string_view& row);
    bool FillUp();
    void SkipRestOfLine();

    std::unique_ptr<BytesIn> bytes_;
    std::unique_ptr<ShipmentReader> reader_;
    std::string header_;
    std::string buffer_;
    std::size_t begin_ = 0;  ///< Of what is not read yet in the buffer.
    bool is_at_end_ = false;
    std::uint64_t row_ = 1;  ///< The next one.
    std::uint64_t digest_ = 0;
    RowsOfLines rows_of_lines_;
};

}  // namespace cwt
