// What the sample files hold, by file name.
#pragma once

#include <map>
#include <string>

#include "reference/samples/sample_data.h"

namespace hundredweight::samples {

using FileContents = std::map<std::string, std::string>;

FileContents TariffSetFiles(const SetOptions& options);
FileContents EngineFiles();
FileContents ServiceGuideFiles();
FileContents ProfileFiles();
FileContents Shipments();

}  // namespace hundredweight::samples
