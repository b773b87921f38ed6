// What a batch's rows depend on besides its input.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "batch/batch.h"
#include "batch/data_watch.h"

namespace cwt {

/// The options that rows depend on, the columns of a CSV input, and the state of the data.
nlohmann::ordered_json TermsOf(const BatchOptions& options, const std::string& header,
                               const DataWatch& data);

}  // namespace cwt
