#include <fmt/format.h>
#include <hundredweight/engine_interface.h>
#include <hundredweight/exports.h>
#include <malloc.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "bare_engine.h"
#include "data_sets.h"
#include "measures.h"
#include "session/session.h"
#include "shipments.h"

namespace hundredweight::bench {
namespace {

namespace fs = std::filesystem;

/// Shipments that can be rated, as the library's records and as the requests that it sends.
struct Prepared {
    std::vector<std::unique_ptr<RateContext>> records;
    std::vector<EngineRateRecord> requests;
};

constexpr int kRows = 200;
/// Of which the records stay in the processor's cache, as the one record of a host does.
constexpr int kFewRows = 8;

/// The session's shipments; with requests when the engine records them.
Prepared Prepare(cwt::Session& session, int rows, const EngineRateRecord* request) {
    Prepared prepared;
    for (const cwt::Shipment& shipment : GeneratedShipments(rows)) {
        if (!std::holds_alternative<cwt::Bill>(session.Rate(shipment, 0))) continue;
        prepared.records.push_back(std::make_unique<RateContext>(session.context()));
        if (request) prepared.requests.push_back(*request);
    }
    return prepared;
}

std::vector<EngineRateRecord> SampleRequests(int rows) {
    cwt::Session session({.data = SampleSet(), .engine = HWT_RECORDING_ENGINE});
    const auto last_request =
        EntryPoint<const EngineRateRecord* (*)()>(HWT_RECORDING_ENGINE, "LastRequest");
    return Prepare(session, rows, last_request()).requests;
}

Work RateInTurn(Engine& engine, const std::vector<EngineRateRecord>& requests) {
    return [&](benchmark::State& state) {
        std::size_t next = 0;
        for ([[maybe_unused]] auto _ : state) {
            EngineRateRecord record = requests[next];
            engine.Rate(record);
            benchmark::DoNotOptimize(record);
            // What is not rated costs nothing.
            if (std::string_view(record.NetCharge, sizeof record.NetCharge).ends_with(" 0.00")) {
                throw std::runtime_error("not rated");
            }
            next = (next + 1) % requests.size();
        }
    };
}

Work RateThroughLibrary(Prepared& prepared) {
    return [&](benchmark::State& state) {
        std::size_t next = 0;
        for ([[maybe_unused]] auto _ : state) {
            if (RateShipment(prepared.records[next].get(), 0, 0) != 0) {
                throw std::runtime_error("not rated");
            }
            next = (next + 1) % prepared.records.size();
        }
    };
}

/// Requests between postal codes of the lanes in a rate base, at random.
std::vector<EngineRateRecord> ScatteredRequests(const fs::path& data, EngineRateRecord request) {
    constexpr std::size_t kRequests = 4000;
    std::vector<std::pair<std::string, std::string>> prefixes;
    std::ifstream file(data / "tolvex-lanes.txt");
    // SMPLNATL | 010 | 011 | ... or SMPLNATL | 300-319 | 600-629 | ...
    for (std::string row; std::getline(file, row);) {
        if (!row.starts_with("SMPLNATL | ")) continue;
        const std::string origin = row.substr(11, 3);
        const std::string destination = row.substr(row.find("| ", 11) + 2, 3);
        if (origin < "999" && destination < "999") prefixes.emplace_back(origin, destination);
    }
    for (char* const point : {request.OrigState, request.DestState}) {
        std::memset(point, ' ', sizeof request.OrigState + sizeof request.OrigCity);
    }
    std::memcpy(request.TariffName, "SMPLNATL", sizeof request.TariffName);
    std::minstd_rand random;
    std::vector<EngineRateRecord> requests;
    while (requests.size() < kRequests) {
        const auto& [origin, destination] = prefixes[random() % prefixes.size()];
        fmt::format_to_n(request.OrigZip, 6, "{}{:02} ", origin, random() % 100);
        fmt::format_to_n(request.DestZip, 6, "{}{:02} ", destination, random() % 100);
        requests.push_back(request);
    }
    return requests;
}

constexpr const char* kEngineFiles[] = {"tolvex-tariffs.txt", "tolvex-rates.txt",
                                        "tolvex-lanes.txt", "tolvex-points.txt",
                                        "tolvex-states.txt"};

/// The engine's files of a directory, in one with the first so many lanes.
void CopyWithLanes(const fs::path& from, const fs::path& to, int count) {
    fs::create_directory(to);
    for (const char* name : kEngineFiles) {
        fs::copy_file(from / name, to / name, fs::copy_options::overwrite_existing);
    }
    std::ifstream lanes(from / "tolvex-lanes.txt");
    std::ofstream kept(to / "tolvex-lanes.txt");
    std::string row;
    for (int i = 0; i < count && std::getline(lanes, row); ++i) kept << row << '\n';
}

/// Reads each file into the same memory, which must be there already: to get it from the system
/// would take longer than to fill it.
void ReadBytes(const fs::path& data, std::string& memory) {
    for (const char* name : kEngineFiles) {
        std::ifstream file(data / name, std::ios::binary);
        const std::uintmax_t size = fs::file_size(data / name);
        memory.resize(std::max<std::size_t>(memory.size(), size));
        file.read(memory.data(), static_cast<std::streamsize>(size));
        benchmark::DoNotOptimize(memory);
    }
}

double BytesInUse() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void MeasureLanes(Table& table, int lanes, const EngineRateRecord& request) {
    constexpr int kMost = 800000;
    const fs::path data = fmt::format("lanes-{}", lanes);
    CopyWithLanes(CarrierSet(), data, lanes);
    const auto requests = ScatteredRequests(data, request);
    const auto sample_requests = ScatteredRequests(SampleSet(), request);
    Engine engine(data), sample(SampleSet());
    std::string memory;
    table.Measure({.what = fmt::format("one rating, of any of {} lanes", lanes),
                   .against = "of any of the sample",
                   .curve = "engine's rating by lanes",
                   .size = static_cast<double>(lanes)},
                  RateInTurn(engine, requests), RateInTurn(sample, sample_requests));
    table.Measure({.what = fmt::format("start of the engine with {} lanes", lanes),
                   .against = "reading its files into memory",
                   .goal = lanes == kMost ? 10.0 : 0.0,
                   .curve = "engine's start by lanes",
                   .size = static_cast<double>(lanes)},
                  Repeatedly([&] { const Engine started(data); }),
                  Repeatedly([&] { ReadBytes(data, memory); }));
}

}  // namespace

void MeasureEngine(Table& table, const Extent& /*extent*/) {
    const std::vector<EngineRateRecord> requests = SampleRequests(kRows);
    const std::vector<EngineRateRecord> few_requests = SampleRequests(kFewRows);
    Engine sample(SampleSet());
    {
        cwt::Session session({.data = SampleSet(), .engine = HWT_TOLVEX});
        Prepared prepared = Prepare(session, kFewRows, nullptr);
        table.Measure({.what = "a shipment through `RateShipment`, the reference engine in it",
                       .against = "the engine's own time for the same requests",
                       .goal = 1.6,
                       .brief = "the library and the reference engine alone, of one that is rated"},
                      RateThroughLibrary(prepared), RateInTurn(sample, few_requests));
    }
    const fs::path carrier_set = CarrierSet();
    const double before = BytesInUse();
    Engine carrier(carrier_set);
    constexpr double kLanes = 800130;
    table.Add({.what = "memory of the engine's rate base at a carrier's size",
               .against = "a byte for each lane",
               .goal = 60},
              BytesInUse() - before, kLanes);
    table.Measure({.what = "one rating of the sample's shipments, rate base of a carrier's size",
                   .against = "rate base of the sample",
                   .goal = 1.2},
                  RateInTurn(carrier, requests), RateInTurn(sample, requests));
    for (const int lanes : {800, 8000, 80000, 800000}) {
        MeasureLanes(table, lanes, requests.front());
    }
}

}  // namespace hundredweight::bench
