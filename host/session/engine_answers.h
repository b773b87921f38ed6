// What an engine has told: classes, weight breaks and cities.
#pragma once

#include <hundredweight/rate_context.h>

#include <optional>
#include <string>
#include <vector>

namespace cwt {

/// The class of freight of all kinds.
inline constexpr const char* kAllKinds = "FAK";

/// What SetClassesAndWeights is told to take the engine\'s tables by.
inline constexpr int32_t kEngineTables = 1;

struct WeightBreak {
    std::string label;
    int weight = 0;  ///< The lowest of it, in pounds.
};

/// What a record holds of a tariff.
std::vector<std::string> ClassesOf(const RateContext& context);
std::vector<WeightBreak> WeightBreaksOf(const RateContext& context);

/// The cities, with their states, that the engine offers for a point that it could not place.
std::vector<std::string> OfferedCities(const RateContext& context);

/// Whether the engine is asked for tables by the name of the record's tariff.
bool IsAskedByName(const RateContext& context);

/// Puts the standard classes in the place of freight of all kinds: a tariff of one rate takes
/// every one of them.
void AdmitStandardClasses(RateContext& context);

/// The tables that the engine gives for a tariff, whatever tables the set has of its own.
struct EngineTables {
    std::vector<std::string> classes;
    std::vector<WeightBreak> breaks;  ///< Ascending; empty when not known.

    /// Whether there is one rate for freight of all kinds.
    bool RatesAllKinds() const { return classes.size() == 1 && classes.front() == kAllKinds; }

    /// Position of the break that holds a weight; nothing when that is not known.
    std::optional<std::size_t> BreakOf(int weight) const;
};

/// Asks the engine for the tables of the record's tariff. A name that it is not asked by gets none.
EngineTables AskForTables(RateContext& copy);

}  // namespace cwt
