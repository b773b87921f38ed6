// Shipments by the hundred, the same on every target.
#pragma once

#include <filesystem>

namespace hundredweight::transcript {

/// Writes shipments of random lanes, lines and terms as JSON files, most of which can be rated.
void WriteGeneratedShipments(const std::filesystem::path& directory);

}  // namespace hundredweight::transcript
