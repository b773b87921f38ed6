// Shipments in a session that stays, as a host keeps it.
#include "session/session.h"

#include <fmt/format.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include "data_sets.h"
#include "measures.h"
#include "reference/samples/generated_shipments.h"
#include "shipment/shipment_json.h"
#include "shipments.h"

namespace hundredweight::bench {
namespace {

constexpr int kShipments = 2000;

struct Variant {
    Set set;
    std::filesystem::path data;
    const char* at;
    int profiles;
};

Work ReadAll(const std::vector<std::string>& rows) {
    return Repeatedly([&] {
        for (const std::string& row : rows) {
            cwt::Shipment shipment;
            benchmark::DoNotOptimize(cwt::ReadShipmentJson(row, shipment));
        }
    });
}

/// The first shipment that is rated, with a profile.
cwt::Shipment WithProfile(cwt::Session& session, const std::vector<cwt::Shipment>& shipments,
                          const char* name) {
    for (cwt::Shipment shipment : shipments) {
        shipment.profile = name;
        if (std::holds_alternative<cwt::Bill>(session.Rate(shipment, 0))) return shipment;
    }
    throw std::runtime_error("no shipment is rated");
}

void MeasureSet(Table& table, const Variant& variant, const std::vector<std::string>& rows) {
    cwt::Session session({.data = variant.data});
    const std::vector<cwt::Shipment> shipments = GeneratedShipments(kShipments);
    table.Measure({.what = fmt::format("a generated shipment in a resident session{}", variant.at),
                   .against = "reading it from its row of JSON",
                   .count = kShipments,
                   .brief = "a generated shipment in a resident session, three in ten refused",
                   .set = variant.set},
                  RateAll(session, shipments), ReadAll(rows));
    const cwt::Shipment known = WithProfile(session, shipments, "Northeast");
    cwt::Shipment unknown = known;
    unknown.profile = "Customer 10001";
    table.Measure(
        {.what = fmt::format("a shipment whose profile is not among the {}", variant.profiles),
         .against = "one whose profile is the second of them",
         .brief = "one that is refused since its profile does not exist",
         .set = variant.set},
        Repeatedly([&] { benchmark::DoNotOptimize(session.Rate(unknown, 0)); }),
        Repeatedly([&] { benchmark::DoNotOptimize(session.Rate(known, 0)); }));
}

}  // namespace

void MeasureSession(Table& table, const Extent& /*extent*/) {
    std::vector<std::string> rows;
    samples::WriteGeneratedRows(kShipments, [&](const std::string& row) { rows.push_back(row); });
    const Variant variants[] = {{Set::kSample, SampleSet(), "", 2},
                                {Set::kCarrier, CarrierSet(), ", at a carrier's size", 10000}};
    // A file that has just changed is read anew each time.
    std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    for (const Variant& variant : variants) MeasureSet(table, variant, rows);
}

}  // namespace hundredweight::bench
