// Look-ups of point codes and tariff names, against a database of the same tables in memory.
#include <fmt/format.h>
#include <hundredweight/exports.h>
#include <sqlite3.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "measures.h"
#include "reference/samples/sample_data.h"
#include "session/session.h"

namespace hundredweight::bench {
namespace {

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

/// A database in memory, with one statement at a time.
class Database {
 public:
    Database() { Check(sqlite3_open(":memory:", &database_)); }
    ~Database() {
        sqlite3_finalize(statement_);
        sqlite3_close(database_);
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Run(const char* words) {
        Check(sqlite3_exec(database_, words, nullptr, nullptr, nullptr));
    }
    void Prepare(const char* words) {
        sqlite3_finalize(statement_);
        Check(sqlite3_prepare_v2(database_, words, -1, &statement_, nullptr));
    }
    void Bind(int parameter, std::string_view text) {
        Check(sqlite3_bind_text(statement_, parameter, text.data(), static_cast<int>(text.size()),
                                SQLITE_STATIC));
    }
    /// Whether there is a row; its first text is copied.
    template <std::size_t Size>
    bool First(char (&text)[Size]) {
        const bool found = sqlite3_step(statement_) == SQLITE_ROW;
        if (found) std::memcpy(text, sqlite3_column_text(statement_, 0), Size);
        sqlite3_reset(statement_);
        return found;
    }
    void Insert() {
        sqlite3_step(statement_);
        Check(sqlite3_reset(statement_));
    }

 private:
    static void Check(int outcome) {
        if (outcome != SQLITE_OK) throw std::runtime_error("the database fails");
    }

    sqlite3* database_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

/// Two postal codes of a lane and their point codes.
struct Lane {
    std::string origin, destination, origin_point, destination_point;
};

std::vector<Lane> RandomLanes(const Network& network) {
    std::mt19937 random(1);
    std::vector<Lane> lanes;
    for (int i = 0; i < kLanes; ++i) {
        const auto draw = [&] {
            return static_cast<int>(random() % static_cast<unsigned>(network.points));
        };
        const int origin = draw(), destination = draw();
        lanes.push_back({network.High(origin), network.Low(destination), Network::PointCode(origin),
                         Network::PointCode(destination)});
    }
    return lanes;
}

/// Lanes in turn, without end.
class LaneTurns {
 public:
    explicit LaneTurns(const std::vector<Lane>& lanes) : lanes_(lanes) {}
    const Lane& Next() { return lanes_[turn_++ % kLanes]; }

 private:
    const std::vector<Lane>& lanes_;
    std::size_t turn_ = 0;
};

/// The sample set with the network's tables, and with no other pair of points than the lanes have.
void WriteTables(const Network& network, bool with_pairs) {
    samples::WriteSampleData(".");
    std::ofstream ranges("SAMPLE.CBS", std::ios::binary), pairs("SAMPLE.CMT", std::ios::binary);
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
    const auto insert = [&](std::initializer_list<std::string> texts) {
        int parameter = 0;
        for (const std::string& text : texts) database.Bind(++parameter, text);
        database.Insert();
    };
    database.Prepare("INSERT INTO cbs VALUES (?, ?, ?)");
    for (int i = 0; i < network.points; ++i) {
        insert({network.High(i), network.Low(i), Network::PointCode(i)});
    }
    database.Prepare("INSERT INTO cmt VALUES (?, ?, ?)");
    for (int i = 0; with_pairs && i < network.points; ++i) {
        for (int j = 0; j < network.points; ++j) {
            insert({Network::PointCode(i), Network::PointCode(j), Network::TariffName(i, j)});
        }
    }
    database.Run("COMMIT");
}

void Enter(const Lane& lane, RateContext& context) {
    std::memcpy(context.OrigZip, lane.origin.c_str(), sizeof context.OrigZip);
    std::memcpy(context.DestZip, lane.destination.c_str(), sizeof context.DestZip);
}

void Require(bool found) {
    if (!found) throw std::runtime_error("a lane is not found");
}

void MeasurePointCodes(Table& table, Pair pair, int points) {
    const Network network(points);
    WriteTables(network, false);
    cwt::Session session({.data = "."});
    const auto context = std::make_unique<RateContext>(session.context());
    Database database;
    FillDatabase(database, network, false);
    database.Prepare("SELECT point FROM cbs WHERE high >= ?1 AND low <= ?1 ORDER BY high LIMIT 1");
    const std::vector<Lane> lanes = RandomLanes(network);
    LaneTurns turns(lanes), database_turns(lanes);
    char point[6];
    const auto select = [&](std::string_view postal_code) {
        database.Bind(1, postal_code);
        Require(database.First(point));
        benchmark::DoNotOptimize(point);
    };
    table.Measure(pair, Repeatedly([&] {
                      const Lane& lane = database_turns.Next();
                      select(lane.origin);
                      select(lane.destination);
                  }),
                  Repeatedly([&] {
                      Enter(turns.Next(), *context);
                      Require(GetTolvexBse(context.get()) == 1);
                  }));
}

void MeasureTariffNames(Table& table, Pair pair, int points) {
    const Network network(points);
    WriteTables(network, true);
    cwt::Session session({.data = "."});
    const auto context = std::make_unique<RateContext>(session.context());
    Database database;
    FillDatabase(database, network, true);
    database.Prepare("SELECT name FROM cmt WHERE origin = ?1 AND destination = ?2");
    const std::vector<Lane> lanes = RandomLanes(network);
    LaneTurns turns(lanes), database_turns(lanes);
    char name[8];
    table.Measure(pair, Repeatedly([&] {
                      const Lane& lane = database_turns.Next();
                      database.Bind(1, lane.origin_point);
                      database.Bind(2, lane.destination_point);
                      Require(database.First(name));
                      benchmark::DoNotOptimize(name);
                  }),
                  Repeatedly([&] {
                      Enter(turns.Next(), *context);
                      Require(GetTolvexBse(context.get()) == 1);
                      Require(GetTolvexTariffName(context.get()) == 1);
                  }));
}

}  // namespace

void MeasureLookups(Table& table, const Extent& /*extent*/) {
    for (const int points : {100, 1000, 10000, 100000}) {
        MeasurePointCodes(table,
                          {.what = fmt::format("SQLite: two point codes of {} ranges", points),
                           .against = "GetTolvexBse",
                           .goal = points == 100000 ? 15.0 : 0.0,
                           .side = Goal::kAtLeast,
                           .curve = "point codes",
                           .size = static_cast<double>(points)},
                          points);
    }
    for (const int points : {32, 100, 316, 1000}) {
        const int pairs = points * points;
        MeasureTariffNames(table,
                           {.what = fmt::format("SQLite: a tariff name of {} pairs", pairs),
                            .against = "GetTolvexBse and GetTolvexTariffName",
                            .goal = points == 1000 ? 8.0 : 0.0,
                            .side = Goal::kAtLeast,
                            .curve = "tariff names",
                            .size = static_cast<double>(pairs)},
                           points);
    }
}

}  // namespace hundredweight::bench
