// The files that the library writes for its users.
#pragma once

#include <filesystem>

namespace hundredweight::transcript {

/// Lets the library write defaults, accessorial items, profiles and option files, each kind below
/// a directory that holds the sample data.
void WriteUserFiles(const std::filesystem::path& directory);

}  // namespace hundredweight::transcript
