#include <fmt/format.h>

#include <fstream>
#include <string>
#include <variant>
#include <vector>

#include "command_run.h"
#include "measures.h"
#include "reference/samples/generated_shipments.h"
#include "reference/samples/sample_data.h"
#include "session/session.h"
#include "shipment/shipment_json.h"
#include "text/json_writer.h"

namespace hundredweight::bench {
namespace {

std::vector<cwt::Shipment> WriteAndReadRows(const char* name, int count) {
    std::ofstream file(name, std::ios::binary);
    std::vector<cwt::Shipment> shipments;
    samples::WriteGeneratedRows(count, [&](const std::string& row) {
        file << row;
        shipments.emplace_back();
        if (!cwt::ReadShipmentJson(row, shipments.back()).empty()) shipments.pop_back();
    });
    return shipments;
}

Work Batch(const std::string& rows, int jobs) {
    return Repeatedly([=] {
        RunCommand(
            fmt::format("{} batch {} --jobs {} --to ndjson >/dev/null 2>&1", HWT_CWT, rows, jobs));
    });
}

Work RateAll(cwt::Session& session, const std::vector<cwt::Shipment>& shipments) {
    return Repeatedly([&] {
        for (const cwt::Shipment& shipment : shipments) {
            benchmark::DoNotOptimize(session.Rate(shipment, 0));
        }
    });
}

void RateToJson(cwt::Session& session, const cwt::Shipment& shipment, bool explained) {
    std::string text;
    cwt::JsonWriter json(text, cwt::JsonWriter::kCompact);
    if (explained) {
        const cwt::ExplainedOutcome outcome = session.Explain(shipment, 0);
        const auto* bill = std::get_if<cwt::ExplainedBill>(&outcome);
        if (bill != nullptr) WriteJson(json, bill->bill, bill->explanation);
    } else {
        const cwt::Outcome outcome = session.Rate(shipment, 0);
        if (const auto* bill = std::get_if<cwt::Bill>(&outcome)) WriteJson(json, *bill);
    }
    benchmark::DoNotOptimize(text);
}

Work RateAllToJson(cwt::Session& session, const std::vector<cwt::Shipment>& shipments,
                   bool explained) {
    return Repeatedly([&, explained] {
        for (const cwt::Shipment& shipment : shipments) RateToJson(session, shipment, explained);
    });
}

double PeakBytes(int rows) {
    return static_cast<double>(
        RunCommand(fmt::format("{} sample --shipments {} | {} batch - --from ndjson --data . "
                               "--jobs 2 >/dev/null 2>&1",
                               HWT_CWT, rows, HWT_CWT))
            .peak_bytes);
}

}  // namespace

void MeasureRows(Table& table, const Extent& extent) {
    constexpr int kRows = 50000, kFewRows = 10000;
    samples::WriteSampleData(".");
    const std::vector<cwt::Shipment> shipments = WriteAndReadRows("rows.ndjson", kRows);
    cwt::Session session({.data = "."});
    table.Measure({.what = "a row through `cwt batch --jobs 1`, NDJSON to NDJSON",
                   .against = "its rating in process",
                   .goal = 2.5,
                   .clock = Clock::kWall},
                  Batch("rows.ndjson", 1), RateAll(session, shipments));
    table.Measure({.what = "`--jobs 1`",
                   .against = "`--jobs 2`",
                   .goal = 1.8,
                   .side = Goal::kAtLeast,
                   .clock = Clock::kWall},
                  Batch("rows.ndjson", 1), Batch("rows.ndjson", 2));
    table.Measure(
        {.what = "a row explained, as JSON", .against = "not explained, as JSON", .goal = 3},
        RateAllToJson(session, shipments, true), RateAllToJson(session, shipments, false));
    table.Add({.what = fmt::format("memory of all processes at {} rows", extent.rows),
               .against = fmt::format("at {} rows", kFewRows),
               .goal = 1.2},
              PeakBytes(extent.rows), PeakBytes(kFewRows));
}

}  // namespace hundredweight::bench
