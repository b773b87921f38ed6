// Shipments in rows: JSON objects, one a line, or the rows of a CSV table.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

class ShipmentReader {
 public:
    static constexpr std::size_t kLongestRow = std::size_t{1} << 20;  ///< Bytes.

    ShipmentReader() = default;
    ShipmentReader(const ShipmentReader&) = delete;
    ShipmentReader& operator=(const ShipmentReader&) = delete;
    virtual ~ShipmentReader() = default;

    /// Reads a row, with or without its line end. Result: all that is wrong with it; the shipment
    /// holds only when that is nothing, but its id as far as it could be read. `passed` gets the
    /// texts of the columns that nobody reads; empty ones when the row does not fit its header.
    virtual Refusals Read(std::string_view row, Shipment& shipment,
                          std::vector<std::string>& passed) = 0;

    /// The names of the columns that nobody reads, in their order.
    virtual const std::vector<std::string>& passed() const = 0;

    /// Where the first row of the text ends, behind its line end; npos when the text does not hold
    /// it to its end. With `last`, nothing follows the text, and its end ends a row too.
    virtual std::size_t RowEnd(std::string_view text, bool last) const = 0;
};

std::unique_ptr<ShipmentReader> MakeNdjsonReader();

/// Reads rows under this header, given with or without its byte order mark and line end. Throws
/// std::runtime_error, with the reason, for a header that cannot be relied on. A column in
/// `allowed` is passed on though its name is nearly that of one that is read.
std::unique_ptr<ShipmentReader> MakeCsvReader(std::string_view header_row,
                                              const std::vector<std::string>& allowed);

}  // namespace cwt
