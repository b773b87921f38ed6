// A batch: rows of shipments in, rows of bills out, in their order.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/row_source.h"
#include "batch/tally.h"
#include "files/packing.h"
#include "session/sources.h"

namespace cwt {

/// A slice of the rows: of `count` slices of about equal size, the `number`th, from 1.
struct Part {
    std::uint64_t number = 1, count = 1;
};

struct BatchOptions {
    std::string input;   ///< A file; "-" is standard input.
    std::string output;  ///< A file; empty is standard output.
    Form from = Form::kNdjson, to = Form::kNdjson;
    Sources sources;
    unsigned jobs = 1;
    std::optional<Part> part;
    bool resume = false;
    bool progress = false;
    std::chrono::seconds timeout{60};
    std::vector<std::string> allowed;  ///< Columns to pass on though their names look like slips.
    std::string version;               ///< Of the program; a run is not gone on with by another.
    std::function<void(const std::string&)> say;  ///< Told what concerns the whole run.
};

struct BatchResult {
    Tally tally;  ///< With the rows of the runs that this one went on with.
    std::uint64_t rows_here = 0;
    double seconds = 0;
    /// The first row that was not kept, when the program was asked to stop.
    std::optional<std::uint64_t> stopped_before;
};

/// Throws std::runtime_error when the run cannot go on; what was kept until then is there for
/// another to go on with.
BatchResult RunBatch(const BatchOptions& options);

}  // namespace cwt
