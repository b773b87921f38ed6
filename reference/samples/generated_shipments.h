// Shipments by the hundred, the same on every machine.
#pragma once

#include <filesystem>

namespace hundredweight::samples {

/// Writes shipments of random lanes, lines and terms on the sample tariffs as JSON files,
/// "000.json" and on. Most can be rated; about one in five has something wrong with it. The
/// directory is created; throws std::filesystem::filesystem_error when it cannot be.
void WriteGeneratedShipments(const std::filesystem::path& directory, int count);

}  // namespace hundredweight::samples
