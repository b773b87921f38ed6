// The JSON form of a shipment.
#pragma once

#include <string_view>

#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

/// Reads a shipment. Result: all that is wrong with its form; the shipment holds only when that is
/// nothing.
Refusals ReadShipmentJson(std::string_view text, Shipment& shipment);

}  // namespace cwt
