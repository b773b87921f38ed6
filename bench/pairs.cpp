#include "pairs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "report.h"

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
    Keep({pair, SpreadOf(ratios), SpreadOf(turns.a).median / pair.count,
          SpreadOf(turns.b).median / pair.count});
}

void Table::Add(const Pair& pair, double a, double b) {
    Keep({pair, {a / b, a / b, a / b}, a, b, Unit::kBytes});
}

void Table::Keep(Row row) {
    fmt::print("{}{}", rows_.empty() ? kTableHead : "", TableLine(row));
    std::fflush(stdout);
    rows_.push_back(std::move(row));
}

}  // namespace hundredweight::bench
