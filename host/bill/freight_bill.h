// The result of a rating as a rating clerk reads it.
#pragma once

#include <hundredweight/rate_context.h>

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace cwt {

/// The bill as text, lines ending in LF.
std::string BillText(const RateContext& context);

/// The bill with the field's terms; rates, charges and percentages are decimal texts, exact to the
/// cent, and weights are whole pounds.
nlohmann::ordered_json BillJson(const RateContext& context);

}  // namespace cwt
