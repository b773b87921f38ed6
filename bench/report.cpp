#include "report.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <span>
#include <utility>

namespace hundredweight::bench {
namespace {

struct Step {
    double size;
    const char* name;
};

constexpr Step kTimes[] = {{1e9, " s"}, {1e6, " ms"}, {1e3, " µs"}, {1, " ns"}};
constexpr Step kBytes[] = {{1e9, " GB"}, {1e6, " MB"}, {1e3, " kB"}, {1, " bytes"}};
constexpr Step kNumbers[] = {{1e6, " million"}, {1e3, " thousand"}, {1, ""}};

/// "1.23 ms"
std::string Text(double amount, std::span<const Step> steps) {
    for (const Step& step : steps) {
        if (amount >= step.size) return fmt::format("{:.3g}{}", amount / step.size, step.name);
    }
    return fmt::format("{:.3g}{}", amount, steps.back().name);
}

std::string AmountText(double amount, Unit unit) {
    return unit == Unit::kBytes ? Text(amount, kBytes) : Text(amount, kTimes);
}

std::string GoalText(const Pair& pair) {
    if (pair.goal == 0) return "";
    return fmt::format("at {} {:.3g}", pair.side == Goal::kAtMost ? "most" : "least", pair.goal);
}

const char* MetText(const Row& row) {
    const double goal = row.pair.goal, ratio = row.ratio.median;
    if (goal == 0) return "";
    return (row.pair.side == Goal::kAtMost ? ratio <= goal : ratio >= goal) ? "yes" : "no";
}

std::string RatioText(const Spread& ratio) {
    if (ratio.low == ratio.high) return fmt::format("{:.3g}", ratio.median);
    return fmt::format("{:.3g} ({:.3g} to {:.3g})", ratio.median, ratio.low, ratio.high);
}

/// "32 µs, 31 thousand a second", the latter of what is done many at a time.
std::string BriefText(const Row& row) {
    std::string text = AmountText(row.a, row.unit);
    if (row.pair.count > 1) text += fmt::format(", {} a second", Text(1e9 / row.a, kNumbers));
    return text;
}

/// What a host wants to know, by the size of the data.
std::string BriefTable(const std::vector<Row>& rows) {
    std::vector<std::pair<std::string, std::array<std::string, 2>>> lines;
    for (const Row& row : rows) {
        if (row.pair.brief.empty()) continue;
        auto line =
            std::ranges::find(lines, row.pair.brief, [](auto& known) { return known.first; });
        if (line == lines.end()) line = lines.insert(line, {row.pair.brief, {}});
        line->second[static_cast<std::size_t>(row.pair.set)] = BriefText(row);
    }
    if (lines.empty()) return "";
    std::string text = "| What | Sample | Carrier's size |\n|---|---|---|\n";
    for (const auto& [name, texts] : lines) {
        text += fmt::format("| {} | {} | {} |\n", name, texts[0], texts[1]);
    }
    return text;
}

std::string Marked(const char* name, const std::string& text) {
    return fmt::format("<!-- {} -->\n\n{}\n<!-- end of {} -->\n", name, text, name);
}

}  // namespace

const char* const kTableHead =
    "| A | B | Goal | Met | A : B, median (lowest to highest) | Of one A, of one B |\n"
    "|---|---|---|---|---|---|\n";

std::string TableLine(const Row& row) {
    return fmt::format("| {} | {} | {} | {} | {} | {}, {} |\n", row.pair.what, row.pair.against,
                       GoalText(row.pair), MetText(row), RatioText(row.ratio),
                       AmountText(row.a, row.unit), AmountText(row.b, row.unit));
}

std::string Markdown(const std::vector<Row>& rows) {
    std::string text = kTableHead;
    for (const Row& row : rows) text += TableLine(row);
    const std::string brief = BriefTable(rows);
    return (brief.empty() ? "" : Marked("in short", brief) + "\n") + Marked("all rows", text);
}

std::string Json(const std::vector<Row>& rows) {
    auto json = nlohmann::ordered_json::array();
    for (const Row& row : rows) {
        json.push_back({{"what", row.pair.what},
                        {"against", row.pair.against},
                        {"goal", row.pair.goal},
                        {"goal_is", row.pair.side == Goal::kAtMost ? "at most" : "at least"},
                        {"lowest", row.ratio.low},
                        {"median", row.ratio.median},
                        {"highest", row.ratio.high},
                        {"unit", row.unit == Unit::kBytes ? "bytes" : "nanoseconds"},
                        {"a", row.a},
                        {"b", row.b},
                        {"curve", row.pair.curve},
                        {"size", row.pair.size}});
    }
    return json.dump(2) + "\n";
}

}  // namespace hundredweight::bench
