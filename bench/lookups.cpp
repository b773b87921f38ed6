// Look-ups of point codes and tariff names, against a database of the same tables in memory.
#include <fmt/format.h>
#include <hundredweight/exports.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "database.h"
#include "measures.h"
#include "reference/samples/sample_data.h"
#include "session/session.h"

namespace hundredweight::bench {
namespace {

constexpr const char* kDirectory = "network";
constexpr int kLanes = 4096;  ///< A power of two.

/// A postal code of six letters and digits in turns; greater numbers give greater codes.
std::string PostalCode(int number) {
    std::string code(6, ' ');
    for (std::size_t place = code.size(); place-- > 0;) {
        const int base = place % 2 == 0 ? 26 : 10;
        code[place] = static_cast<char>((place % 2 == 0 ? 'A' : '0') + number % base);
        number /= base;
    }
    return code;
}

/// Ranges of postal codes with a point code each, and a tariff name for each pair of point codes.
struct Network {
    explicit Network(int point_count) : points(point_count) {}

    static constexpr int kCodes = 26 * 10 * 26 * 10 * 26 * 10;
    int Step() const { return kCodes / points; }
    std::string Low(int point) const { return PostalCode(point * Step()); }
    std::string High(int point) const { return PostalCode(point * Step() + Step() / 2); }
    static std::string PointCode(int point) { return fmt::format("P{:05}", point); }
    static std::string TariffName(int origin, int destination) {
        return fmt::format("T{:07}", (origin * 7919 + destination) % 1000);
    }

    int points;
};

/// Two postal codes.
struct Lane {
    std::string origin, destination;
};

/// Random lanes, one after the other without end.
class Lanes {
 public:
    explicit Lanes(const Network& network) {
        std::mt19937 random(1);
        const auto points = static_cast<unsigned>(network.points);
        const auto draw = [&] { return static_cast<int>(random() % points); };
        for (int i = 0; i < kLanes; ++i) {
            lanes_.push_back({network.High(draw()), network.Low(draw())});
        }
    }
    const Lane& Next() { return lanes_[turn_++ % kLanes]; }

 private:
    std::vector<Lane> lanes_;
    std::size_t turn_ = 0;
};

/// The sample set with the network's tables.
void WriteTables(const Network& network, bool with_pairs) {
    samples::WriteSampleData(kDirectory);
    std::ofstream ranges(fmt::format("{}/SAMPLE.CBS", kDirectory), std::ios::binary);
    std::ofstream pairs(fmt::format("{}/SAMPLE.CMT", kDirectory), std::ios::binary);
    for (int i = 0; i < network.points; ++i) {
        ranges << network.Low(i) << network.High(i) << Network::PointCode(i);
        for (int j = 0; with_pairs && j < network.points; ++j) {
            pairs << Network::PointCode(i) << Network::PointCode(j) << Network::TariffName(i, j);
        }
    }
}

void FillDatabase(Database& database, const Network& network, bool with_pairs) {
    database.Run(
        "CREATE TABLE cbs (high TEXT PRIMARY KEY, low TEXT, point TEXT) WITHOUT ROWID;"
        "CREATE TABLE cmt (origin TEXT, destination TEXT, name TEXT,"
        " PRIMARY KEY (origin, destination)) WITHOUT ROWID; BEGIN");
    Statement range(database, "INSERT INTO cbs VALUES (?, ?, ?)");
    for (int i = 0; i < network.points; ++i) {
        range.Insert({network.High(i), network.Low(i), Network::PointCode(i)});
    }
    Statement pair(database, "INSERT INTO cmt VALUES (?, ?, ?)");
    for (int i = 0; with_pairs && i < network.points; ++i) {
        for (int j = 0; j < network.points; ++j) {
            pair.Insert({Network::PointCode(i), Network::PointCode(j), Network::TariffName(i, j)});
        }
    }
    database.Run("COMMIT");
}

/// A lane's point codes, and its tariff name when there are pairs.
Work Select(const Database& database, Lanes& lanes, bool with_pairs) {
    const auto range = std::make_shared<Statement>(
        database, "SELECT point FROM cbs WHERE high >= ?1 AND low <= ?1 ORDER BY high LIMIT 1");
    const auto pair = std::make_shared<Statement>(
        database, "SELECT name FROM cmt WHERE origin = ?1 AND destination = ?2");
    return Repeatedly([=, &lanes] {
        const Lane& lane = lanes.Next();
        char origin[6], destination[6], name[8];
        range->Select({lane.origin}, origin);
        range->Select({lane.destination}, destination);
        benchmark::DoNotOptimize(origin);
        benchmark::DoNotOptimize(destination);
        if (!with_pairs) return;
        pair->Select({{origin, sizeof origin}, {destination, sizeof destination}}, name);
        benchmark::DoNotOptimize(name);
    });
}

Work LookUp(RateContext& context, Lanes& lanes, bool with_pairs) {
    return Repeatedly([=, &context, &lanes] {
        const Lane& lane = lanes.Next();
        std::memcpy(context.OrigZip, lane.origin.c_str(), sizeof context.OrigZip);
        std::memcpy(context.DestZip, lane.destination.c_str(), sizeof context.DestZip);
        if (GetTolvexBse(&context) == 0 || (with_pairs && GetTolvexTariffName(&context) == 0)) {
            throw std::runtime_error("not found");
        }
        benchmark::DoNotOptimize(context.TariffName);
    });
}

void MeasureLanes(Table& table, const Pair& pair, int points, bool with_pairs) {
    const Network network(points);
    WriteTables(network, with_pairs);
    const cwt::Session session({.data = kDirectory});
    const auto context = std::make_unique<RateContext>(session.context());
    Database database;
    FillDatabase(database, network, with_pairs);
    Lanes lanes(network), database_lanes(network);
    table.Measure(pair, Select(database, database_lanes, with_pairs),
                  LookUp(*context, lanes, with_pairs));
}

}  // namespace

void MeasureLookups(Table& table, const Extent& /*extent*/) {
    const auto measure = [&](const char* curve, int points, int size, bool with_pairs,
                             double goal) {
        MeasureLanes(
            table,
            {.what = fmt::format("SQLite in memory, {} of {} records", curve, size),
             .against = with_pairs ? "GetTolvexBse and GetTolvexTariffName" : "GetTolvexBse",
             .goal = goal,
             .side = Goal::kAtLeast,
             .curve = curve,
             .size = static_cast<double>(size)},
            points, with_pairs);
    };
    for (const int points : {100, 1000, 10000}) {
        measure("a lane's point codes", points, points, false, 0);
    }
    measure("a lane's point codes", 100000, 100000, false, 15);
    for (const int points : {32, 100, 316}) {
        measure("a lane's tariff name", points, points * points, true, 0);
    }
    measure("a lane's tariff name", 1000, 1000000, true, 8);
}

}  // namespace hundredweight::bench
