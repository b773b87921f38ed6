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

/// Dollars of a rate that pays so much for every 1000 cents of class 100, rounded to whole dimes,
/// as rates are quoted.
std::string RateText(int class_100, int permille);

}  // namespace hundredweight::samples
