// What the sample files hold, by file name.
#pragma once

#include <map>
#include <string>

#include "reference/samples/sample_data.h"

namespace hundredweight::samples {

using FileContents = std::map<std::string, std::string>;

FileContents TariffSetFiles(const SetOptions& options);
FileContents EngineFiles();
FileContents Shipments();

// The records of the tariff set that the library reads field by field.
std::string SettingsRecord(const SetOptions& options);  ///< SET.
std::string DefaultsRecord(const SetOptions& options);  ///< DEF.
std::string DiscountRecord(const SetOptions& options);  ///< DIS.
std::string BaseRateRecord(const SetOptions& options);  ///< BSE.

}  // namespace hundredweight::samples
