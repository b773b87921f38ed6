// The sample data that is measured with, in the current directory.
#pragma once

#include <filesystem>

namespace hundredweight::bench {

/// The sample data, and those of a carrier's size, which take 244 MB. Each is written once a run,
/// when it is first asked for; nobody changes it.
std::filesystem::path SampleSet();
std::filesystem::path CarrierSet();

}  // namespace hundredweight::bench
