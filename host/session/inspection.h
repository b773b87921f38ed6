// A tariff set as the library sees it, for the person who has been sent one.
#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "session/rating_session.h"

namespace cwt {

/// What is in a set, section by section; "loads" tells whether the library could load it.
nlohmann::ordered_json Inspect(const Sources& sources, bool with_engine);

/// The same for a reader, lines ending in LF.
std::string InspectionText(const nlohmann::ordered_json& inspection);

}  // namespace cwt
