// The profiles of a directory, for a reader.
#pragma once

#include <hundredweight/rate_context.h>

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "shipment/refusal.h"

namespace cwt {

/// Throws Broken when a file of profiles cannot be read, is empty or ends within a profile.
void RequireWholeProfiles(const std::filesystem::path& file);

/// The same for the file of a directory, which must be there and may be written: the library opens
/// it for both.
void RequireProfiles(const std::filesystem::path& directory);

/// The names of all profiles of a record's directory. Throws Broken when there is no profile file,
/// or it cannot be read.
std::vector<std::string> ProfileNames(RateContext& context);

/// Loads a profile into the record by its name. Throws as above. Result: whether there is one.
bool LoadProfile(RateContext& context, const std::string& name);

/// That there is no profile of a name, and which was most likely meant.
Refusal UnknownProfile(const std::vector<std::string>& names, const std::string& name);

/// The settings of the record's profile.
nlohmann::ordered_json ProfileJson(const RateContext& context);

/// The same for a reader, lines ending in LF.
std::string ProfileText(const nlohmann::ordered_json& profile);

}  // namespace cwt
