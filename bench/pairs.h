// Times as ratios: what is measured and what it is measured against take turns in one run.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace hundredweight::bench {

/// What one of a pair does, as often as its state asks.
using Work = std::function<void(benchmark::State&)>;

/// Makes a Work of what is done at a time.
template <typename Function>
Work Repeatedly(Function function) {
    return [function = std::move(function)](benchmark::State& state) mutable {
        for ([[maybe_unused]] auto _ : state) function();
    };
}

/// What is told of a thread, or of the processes that it waits for too.
enum class Clock { kThread, kWall };

enum class Goal { kAtMost, kAtLeast };

enum class Set { kSample, kCarrier };

struct Pair {
    std::string what;
    std::string against = "";
    double goal = 0;  ///< Of the ratio; 0: none, the row shows how another grows.
    Goal side = Goal::kAtMost;
    Clock clock = Clock::kThread;
    std::string curve = "";  ///< The curve that the ratio is a point of, when it is one, and
    double size = 0;         ///< where: how much data there are.
    int count = 1;           ///< How many of what is named A and B do at a time.
    std::string brief = "";  ///< A's name in the table in short, when it stands there, and
    Set set = Set::kSample;  ///< under which data.
};

struct Spread {
    double low = 0, median = 0, high = 0;
};

enum class Unit { kNanoseconds, kBytes };

/// A pair's outcome: the ratio, and what one A and one B take.
struct Row {
    Pair pair;
    Spread ratio;
    double a = 0, b = 0;
    Unit unit = Unit::kNanoseconds;
};

/// The rows of a run, in their order.
class Table {
 public:
    /// Measures a against b and prints the row.
    void Measure(const Pair& pair, const Work& a, const Work& b);
    /// Adds bytes and prints the row.
    void Add(const Pair& pair, double a, double b);

    const std::vector<Row>& rows() const { return rows_; }

 private:
    void Keep(Row row);

    std::vector<Row> rows_;
};

}  // namespace hundredweight::bench
