// A shipment in a file.
#pragma once

#include <string>

#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

inline constexpr const char* kStandardInput = "-";

/// Reads a JSON file, or standard input. Throws std::runtime_error, with the reason, when it cannot
/// be read to its end. Result: as ReadShipmentJson, and more than 8 MiB are no shipment.
Refusals ReadShipmentFile(const std::string& name, Shipment& shipment);

}  // namespace cwt
