// What a row of a batch and an explanation cost, as ratios: A and B take turns in one run.
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "command_run.h"
#include "reference/samples/generated_shipments.h"
#include "reference/samples/sample_data.h"
#include "session/messages.h"
#include "session/session.h"
#include "shipment/shipment_json.h"
#include "text/json_writer.h"

namespace hundredweight::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 9;

int NumberOr(const char* variable, int otherwise) {
    const char* const text = std::getenv(variable);
    return text != nullptr ? std::atoi(text) : otherwise;
}

std::string WriteRows(const char* name, int count) {
    std::ofstream file(name, std::ios::binary);
    samples::WriteGeneratedRows(count, [&](const std::string& row) { file << row; });
    return name;
}

double Seconds(const std::function<void()>& work) {
    const auto begin = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

struct Spread {
    double low, median, high;
};

/// Of the ratios of A to B, in turns.
Spread Ratios(const std::function<double()>& a, const std::function<double()>& b) {
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        const double of_a = a();
        ratios.push_back(of_a / b());
    }
    std::ranges::sort(ratios);
    return {ratios.front(), ratios[ratios.size() / 2], ratios.back()};
}

void Tell(const char* what, double goal, const Spread& ratio) {
    fmt::print("| {} | {:.2f} | {:.2f} ({:.2f} to {:.2f}) |\n", what, goal, ratio.median, ratio.low,
               ratio.high);
    std::fflush(stdout);
}

std::vector<cwt::Shipment> ReadShipments(const std::string& name) {
    std::vector<cwt::Shipment> shipments;
    std::ifstream file(name);
    for (std::string line; std::getline(file, line);) {
        shipments.emplace_back();
        if (!cwt::ReadShipmentJson(line, shipments.back()).empty()) shipments.pop_back();
    }
    return shipments;
}

double Rate(cwt::Session& session, const std::vector<cwt::Shipment>& shipments) {
    return Seconds([&] {
        for (const cwt::Shipment& shipment : shipments) {
            benchmark::DoNotOptimize(session.Rate(shipment, 0));
        }
    });
}

double Batch(const std::string& rows, int jobs) {
    return RunCommand(fmt::format("{} batch {} --jobs {} --to ndjson >/dev/null 2>&1", HWT_CWT,
                                  rows, jobs))
        .seconds;
}

double RateToJson(cwt::Session& session, const std::vector<cwt::Shipment>& shipments,
                  bool explained) {
    return Seconds([&] {
        for (const cwt::Shipment& shipment : shipments) {
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
    });
}

double PeakBytes(int rows) {
    return static_cast<double>(
        RunCommand(fmt::format("{} sample --shipments {} | {} batch - --from "
                               "ndjson --jobs 2 >/dev/null 2>&1",
                               HWT_CWT, rows, HWT_CWT))
            .peak_bytes);
}

void Measure() {
    constexpr int kRows = 100000, kFewRows = 10000;
    const int many_rows = NumberOr("BENCH_ROWS", 1000000);
    samples::WriteSampleData(".");
    const std::string rows = WriteRows("rows.ndjson", kRows);
    const std::vector<cwt::Shipment> shipments = ReadShipments(rows);
    cwt::Session session({.data = "."});
    fmt::print("| What | Goal | Ratio (lowest to highest) |\n|---|---|---|\n");
    Tell("one row through `cwt batch --jobs 1`, NDJSON to NDJSON, against its rating in process",
         2.5, Ratios([&] { return Batch(rows, 1); }, [&] { return Rate(session, shipments); }));
    Tell("`--jobs 1` against `--jobs 2`, at least", 1.8,
         Ratios([&] { return Batch(rows, 1); }, [&] { return Batch(rows, 2); }));
    Tell("one row explained against not, both as JSON", 3,
         Ratios([&] { return RateToJson(session, shipments, true); },
                [&] { return RateToJson(session, shipments, false); }));
    const double few = PeakBytes(kFewRows), many = PeakBytes(many_rows);
    fmt::print("| memory of all processes at {} rows against {} | 1.20 | {:.2f} ({:.0f} MB) |\n",
               many_rows, kFewRows, many / few, many / 1e6);
}

}  // namespace
}  // namespace hundredweight::bench

int main() {
    namespace fs = std::filesystem;
    const fs::path directory = fs::temp_directory_path() / fmt::format("bench{}", getpid());
    try {
        fs::create_directory(directory);
        fs::current_path(directory);
        cwt::CollectMessageBoxes();
        hundredweight::bench::Measure();
    } catch (const std::exception& error) {
        fmt::print(stderr, "rows_benchmark: {}\n", error.what());
    }
    fs::current_path("/");
    fs::remove_all(directory);
    return 0;
}
