// JSON texts that people write, parsed with the place of every slip.
#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

#include "shipment/refusal.h"

namespace cwt {

/// Parses a JSON text. What is no JSON, with its line and column, and every key that an object has
/// twice are added to the refusals.
nlohmann::json ParseJson(std::string_view text, Refusals& refusals);

}  // namespace cwt
