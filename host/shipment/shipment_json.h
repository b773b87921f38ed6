// The JSON form of a shipment.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

/// Reads a shipment. Result: all that is wrong with its form; the shipment holds only when that is
/// nothing.
Refusals ReadShipmentJson(std::string_view text, Shipment& shipment);

/// The same of a document; what is wrong is added to the refusals.
void ReadShipment(const nlohmann::json& json, Shipment& shipment, Refusals& refusals);

}  // namespace cwt
