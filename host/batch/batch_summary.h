// The summary of a batch.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "batch/batch.h"

namespace cwt {

std::string SummaryText(const BatchResult& result);

/// Of the schema hundredweight/summary/1.
nlohmann::ordered_json SummaryJson(const BatchResult& result);

/// The summary of a run that could not go on.
nlohmann::ordered_json FailureSummaryJson(const std::string& reason);

/// Throws std::runtime_error when the file is there and no summary, or is one of the batch's own,
/// or has no directory.
void RequireSummary(const std::string& name, const BatchOptions& options);

/// Replaces the file. Throws std::runtime_error, with the reason, when it cannot be written.
void WriteSummary(const std::string& name, const nlohmann::ordered_json& summary);

}  // namespace cwt
