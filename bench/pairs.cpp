#include "pairs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace hundredweight::bench {
namespace {

constexpr int kTurns = 11;

/// Keeps the times of each turn.
class Turns : public benchmark::BenchmarkReporter {
 public:
    explicit Turns(Clock clock) : clock_(clock) {}

    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) throw std::runtime_error(run.error_message);
            if (run.run_type != Run::RT_Iteration) continue;
            const double time =
                clock_ == Clock::kThread ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime();
            (run.run_name.function_name == "a" ? a : b).push_back(time);
        }
    }

    std::vector<double> a, b;

 private:
    Clock clock_;
};

void Register(const char* name, const Work& work, Clock clock) {
    benchmark::internal::Benchmark* const benchmark = benchmark::RegisterBenchmark(name, work);
    benchmark->Repetitions(kTurns);
    if (clock == Clock::kWall) benchmark->UseRealTime();
}

Spread SpreadOf(std::vector<double> values) {
    std::ranges::sort(values);
    return {values.front(), values[values.size() / 2], values.back()};
}

/// "1.23 ms"
std::string TimeText(double nanoseconds) {
    constexpr std::pair<double, const char*> kUnits[] = {{1e9, "s"}, {1e6, "ms"}, {1e3, "µs"}};
    for (const auto& [unit, name] : kUnits) {
        if (nanoseconds >= unit) return fmt::format("{:.3g} {}", nanoseconds / unit, name);
    }
    return fmt::format("{:.3g} ns", nanoseconds);
}

std::string GoalText(const Pair& pair) {
    if (pair.goal == 0) return "–";
    return fmt::format("at {} {:.3g}", pair.side == Goal::kAtMost ? "most" : "least", pair.goal);
}

constexpr const char* kHead =
    "| What | Against | Goal | Ratio (lowest to highest) | Of these |\n|---|---|---|---|---|\n";

std::string Line(const Row& row) {
    return fmt::format("| {} | {} | {} | {:.3g} ({:.3g} to {:.3g}) | {} |\n", row.pair.what,
                       row.pair.against, GoalText(row.pair), row.ratio.median, row.ratio.low,
                       row.ratio.high,
                       row.a == 0 ? "–" : TimeText(row.a) + " to " + TimeText(row.b));
}

}  // namespace

void Table::Measure(const Pair& pair, const Work& a, const Work& b) {
    benchmark::ClearRegisteredBenchmarks();
    Register("a", a, pair.clock);
    Register("b", b, pair.clock);
    Turns turns(pair.clock);
    benchmark::RunSpecifiedBenchmarks(&turns);
    if (turns.a.size() != kTurns || turns.b.size() != kTurns) {
        throw std::runtime_error(pair.what + ": not measured");
    }
    std::vector<double> ratios;
    for (std::size_t turn = 0; turn < turns.a.size(); ++turn) {
        ratios.push_back(turns.a[turn] / turns.b[turn]);
    }
    Keep({pair, SpreadOf(ratios), SpreadOf(turns.a).median, SpreadOf(turns.b).median});
}

void Table::Add(const Pair& pair, double a, double b) {
    Keep({pair, {a / b, a / b, a / b}});
}

void Table::Keep(Row row) {
    if (rows_.empty()) fmt::print("{}", kHead);
    fmt::print("{}", Line(row));
    std::fflush(stdout);
    rows_.push_back(std::move(row));
}

std::string Table::Markdown() const {
    std::string text = kHead;
    for (const Row& row : rows_) text += Line(row);
    return text;
}

std::string Table::Json() const {
    auto rows = nlohmann::ordered_json::array();
    for (const Row& row : rows_) {
        rows.push_back({{"what", row.pair.what},
                        {"against", row.pair.against},
                        {"goal", row.pair.goal},
                        {"goal_is", row.pair.side == Goal::kAtMost ? "at most" : "at least"},
                        {"lowest", row.ratio.low},
                        {"median", row.ratio.median},
                        {"highest", row.ratio.high},
                        {"nanoseconds", row.a},
                        {"nanoseconds_against", row.b},
                        {"curve", row.pair.curve},
                        {"size", row.pair.size}});
    }
    return rows.dump(2) + "\n";
}

}  // namespace hundredweight::bench
