// The log of a rating service: a line of JSON an event, on standard error.
#pragma once

#include <nlohmann/json.hpp>

namespace cwt {

/// Writes an event with the time (UTC) before what is told of it, in one write: lines of several
/// processes do not mix.
void LogEvent(const char* event, const nlohmann::ordered_json& told);

}  // namespace cwt
