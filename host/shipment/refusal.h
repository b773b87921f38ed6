// Why a shipment is not rated: an ordinary answer, of which there may be several at once.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace cwt {

class JsonWriter;

struct Refusal {
    std::string place;  ///< What is wrong: "destination.zip", "lines[2].class"; empty: the whole.
    std::string text;   ///< In the library's or the engine's words where they have some.
    int32_t code = 0;   ///< The library's; 0 when it has none for this, -1 for the engine's words.
    std::string written = {};                    ///< The value at the place, where that helps.
    std::vector<std::string> alternatives = {};  ///< What would be right, where it can be listed.
};

using Refusals = std::vector<Refusal>;

/// Writes the refusals as a JSON array.
void WriteJson(JsonWriter& json, const Refusals& refusals);

/// The refusals as JSON, of the schema hundredweight/refusals/1; the id is the shipment's.
nlohmann::ordered_json RefusalsJson(const Refusals& refusals, const std::string& id);

/// One line: "lines[0].class "71": Invalid Class. (code 105); possible: 500, 400".
std::string RefusalText(const Refusal& refusal);

/// All of them, parted by "; ".
std::string ReasonOf(const Refusals& refusals);

}  // namespace cwt
