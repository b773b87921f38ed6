// A tariff set as the library sees it, for the person who has been sent one.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "session/sources.h"

namespace cwt {

struct InspectionScope {
    bool engine = true;         ///< Load for rating by the engine, and start it.
    bool service_guide = true;  ///< Start the service guide too.
};

/// What is in a set, section by section; "loads" tells whether the library could load it, and
/// "failure" what is broken, in the set or in a partner.
nlohmann::ordered_json Inspect(const Sources& sources, const InspectionScope& scope);

/// The same for a reader, lines ending in LF.
std::string InspectionText(const nlohmann::ordered_json& inspection, bool with_states);

/// What a failure of an inspection says.
std::string FailureText(const nlohmann::ordered_json& failure);

}  // namespace cwt
