// Shipments by the hundred, the same on every machine.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace hundredweight::samples {

/// Writes shipments of random lanes, lines and terms on the sample tariffs as JSON files,
/// "000.json" and on. Most can be rated; about one in five has something wrong with it. The
/// directory is created; throws std::filesystem::filesystem_error when it cannot be.
void WriteGeneratedShipments(const std::filesystem::path& directory, int count);

/// The same shipments as rows of NDJSON, with ids "G1" and on.
void WriteGeneratedRows(int count, const std::function<void(const std::string&)>& write);

}  // namespace hundredweight::samples
