// Rates rows, in a process that has a session.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "batch/block.h"
#include "batch/row.h"
#include "batch/tally.h"
#include "files/packing.h"
#include "session/session.h"
#include "shipment/shipment_reader.h"

namespace cwt {

/// Rows in the form that is written, with what they come to.
struct Answer {
    std::uint64_t first_row = 1;
    Tally tally;
    std::string bytes;
};

/// How rows are read and written.
struct RowForms {
    ShipmentReader& reader;
    const RowForm& writer;
};

/// The row of a failure.
Answer FailRow(const RowForms& forms, std::string_view text, std::uint64_t number,
               const std::string& reason);

/// Rates the rows of a block, but for those that are known by their place in it. `tell` is told the
/// place of each row before it is rated. Throws Broken when a partner or the data are.
Answer RateBlock(Session& session, const RowForms& forms, const Block& block,
                 const std::map<std::uint32_t, Answer>& known,
                 const std::function<void(std::uint32_t)>& tell);

}  // namespace cwt
