#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <variant>
#include <vector>

#include "command_run.h"
#include "data_sets.h"
#include "measures.h"
#include "reference/samples/generated_shipments.h"
#include "session/session.h"
#include "shipments.h"
#include "text/json_writer.h"

namespace hundredweight::bench {
namespace {

namespace fs = std::filesystem;

void WriteRows(const char* name, int count) {
    std::ofstream file(name, std::ios::binary);
    samples::WriteGeneratedRows(count, [&](const std::string& row) { file << row; });
}

Work Batch(const char* rows, const fs::path& data, int jobs) {
    return Repeatedly(
        [words = Words{HWT_CWT, "batch", rows, "--data", data, "--jobs", std::to_string(jobs),
                       "--to", "ndjson"}] { RunCommand(words); });
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

double PeakOfBatch(int rows) {
    const std::string words =
        fmt::format("{} sample --shipments {} | {} batch - --from ndjson --data {} --jobs 2",
                    HWT_CWT, rows, HWT_CWT, SampleSet().string());
    return static_cast<double>(PeakBytesOfAll({"/bin/sh", "-c", words}));
}

void MeasureBatch(Table& table, const char* rows, int count, const fs::path& data, Pair pair) {
    cwt::Session session({.data = data});
    const std::vector<cwt::Shipment> shipments = GeneratedShipments(count);
    pair.against = "its rating in process";
    pair.clock = Clock::kWall;
    pair.count = count;
    pair.brief = "a row through `cwt batch --jobs 1`";
    table.Measure(pair, Batch(rows, data, 1), RateAll(session, shipments));
}

}  // namespace

void MeasureRows(Table& table, const Extent& extent) {
    constexpr int kRows = 50000, kFewRows = 10000;
    WriteRows("rows.ndjson", kRows);
    WriteRows("few-rows.ndjson", kFewRows);
    const fs::path sample = SampleSet();
    MeasureBatch(table, "rows.ndjson", kRows, sample,
                 {.what = "a row through `cwt batch --jobs 1`, NDJSON to NDJSON", .goal = 2.5});
    MeasureBatch(
        table, "few-rows.ndjson", kFewRows, CarrierSet(),
        {.what = "a row through `cwt batch --jobs 1` at a carrier's size", .set = Set::kCarrier});
    table.Measure({.what = "a row, `--jobs 1`",
                   .against = "`--jobs 2`",
                   .goal = 1.8,
                   .side = Goal::kAtLeast,
                   .clock = Clock::kWall,
                   .count = kRows},
                  Batch("rows.ndjson", sample, 1), Batch("rows.ndjson", sample, 2));
    cwt::Session session({.data = sample});
    const std::vector<cwt::Shipment> shipments = GeneratedShipments(kRows);
    table.Measure({.what = "a row explained, as JSON",
                   .against = "not explained, as JSON",
                   .goal = 3,
                   .count = kRows},
                  RateAllToJson(session, shipments, true),
                  RateAllToJson(session, shipments, false));
    // A short run is looked at so seldom that its peak may be missed.
    double few = 0;
    for (int run = 0; run < 5; ++run) few = std::max(few, PeakOfBatch(kFewRows));
    table.Add({.what = fmt::format("memory of all processes at {} rows", extent.rows),
               .against = fmt::format("at {} rows", kFewRows),
               .goal = 1.2},
              PeakOfBatch(extent.rows), few);
}

}  // namespace hundredweight::bench
