// A comparison for people and for programs.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "comparison/comparison.h"

namespace cwt {

/// Plain text of lines of 80 columns, while no sum has more than nine digits before the point.
std::string ComparisonText(const Comparison& comparison);

/// Of the schema hundredweight/comparison/1.
nlohmann::ordered_json ComparisonJson(const Comparison& comparison);

/// An HTML page that needs nothing else.
std::string ComparisonPage(const Comparison& comparison);

// What text and page show alike.

/// A table of texts, the first column of names.
struct FigureTable {
    std::string title;
    std::string note;  ///< What the figures are; may be empty.
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>> rows;
};

using NamedGroup = std::pair<std::string, const Group*>;

/// Rising first or falling first, the largest change before the others; groups that went the other
/// way, or stayed, are left out.
std::vector<NamedGroup> TopLanes(const Comparison& comparison, bool rising, std::size_t most);
/// In the order of the classes, FAK and such behind them.
std::vector<NamedGroup> ClassGroups(const Comparison& comparison);
std::vector<NamedGroup> BreakGroups(const Comparison& comparison);

inline constexpr std::size_t kTopLanes = 10;

FigureTable StatusTable(const Comparison& comparison);
FigureTable SumTable(const Comparison& comparison);
FigureTable OccurrenceTable(const Comparison& comparison);
FigureTable PercentileTable(const Comparison& comparison);
FigureTable GroupTable(std::string title, std::string note, const char* head, const char* counted,
                       const std::vector<NamedGroup>& groups);
FigureTable ClassTable(const Comparison& comparison);
FigureTable BreakTable(const Comparison& comparison);
FigureTable LaneTable(const Comparison& comparison, bool rising);

/// "SMPLNATL of 2025-01-06 (1,200 rows)", the most frequent ones.
std::vector<std::string> TariffTexts(const ComparedSide& side);

/// The unit of a distribution, and how its values are shown.
struct Measure {
    const char* title;
    const char* unit;
    int decimals;
    const Histogram* histogram;
};
std::vector<Measure> Measures(const Comparison& comparison);
std::string ValueText(const Measure& measure, int64_t value);
/// "4.0 to 5.0", "below 4.0", "10.0 and more".
std::string BandText(const Measure& measure, const Histogram::Band& band);

inline constexpr int kPercentiles[] = {1, 5, 10, 25, 50, 75, 90, 95, 99};

}  // namespace cwt
