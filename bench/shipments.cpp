#include "shipments.h"

#include <string>

#include "reference/samples/generated_shipments.h"
#include "shipment/shipment_json.h"

namespace hundredweight::bench {

std::vector<cwt::Shipment> GeneratedShipments(int count) {
    std::vector<cwt::Shipment> shipments;
    samples::WriteGeneratedRows(count, [&](const std::string& row) {
        shipments.emplace_back();
        if (!cwt::ReadShipmentJson(row, shipments.back()).empty()) shipments.pop_back();
    });
    return shipments;
}

Work RateAll(cwt::Session& session, const std::vector<cwt::Shipment>& shipments) {
    return Repeatedly([&] {
        for (const cwt::Shipment& shipment : shipments) {
            benchmark::DoNotOptimize(session.Rate(shipment, 0));
        }
    });
}

}  // namespace hundredweight::bench
