// What a batch's rows depend on besides its input.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "batch/batch.h"

namespace cwt {

/// The options that rows depend on, the columns of a CSV input, and size and digest of each file of
/// the data directory; not of files that, by their names, a batch reads or writes, nor of those
/// that its standard streams go to.
nlohmann::ordered_json TermsOf(const BatchOptions& options, const std::string& header);

}  // namespace cwt
