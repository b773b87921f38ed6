// The profiles of a directory, for a reader.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "session/rating_session.h"

namespace cwt {

/// The names of all profiles. Throws Broken when there is no profile file.
std::vector<std::string> ProfileNames(const Sources& sources);

/// One profile's settings by name. Throws Broken when there is none of that name.
nlohmann::ordered_json ShowProfile(const Sources& sources, const std::string& name);

/// The same for a reader, lines ending in LF.
std::string ProfileText(const nlohmann::ordered_json& profile);

}  // namespace cwt
