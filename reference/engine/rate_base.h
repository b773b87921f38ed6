// The engine's rate base: tariffs, their rates and lanes, and the points and states it knows.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "reference/engine/money.h"
#include "reference/text/postal_prefixes.h"

namespace hundredweight::reference {

/// Rates per hundredweight, one per weight break.
using BreakRates = std::vector<Cents>;

struct Tariff {
    std::string name;                  ///< Eight characters.
    std::int32_t effective_date = 0;   ///< YYYYMMDD: its rates hold from this day on.
    std::vector<std::string> classes;  ///< "FAK" alone: one rate for freight of all kinds.
    std::vector<std::int32_t> breaks;  ///< Lowest weight of each break in pounds, ascending from 1.
    std::map<std::string, std::vector<BreakRates>> scales;  ///< By code; rates of each class.

    /// Position in classes, or npos.
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    std::size_t ClassIndex(std::string_view class_code) const;
    /// The break that holds a weight.
    std::size_t BreakIndex(std::int32_t weight) const;
};

/// What a tariff charges from one area to another.
struct Lane {
    std::string tariff;
    PrefixRange origin;
    PrefixRange destination;
    std::string scale;
    Cents minimum = 0;    ///< Minimum charge.
    Cents arbitrary = 0;  ///< Added to the minimum charge for a point that is hard to serve.
};

struct Point {
    std::string postal_code;
    std::string city;
    std::string state;
    char service = ' ';  ///< 'D' served directly, 'I' through another carrier.
};

struct StateRange {
    PrefixRange prefixes;
    std::string state;
};

struct RateBase {
    std::vector<Tariff> tariffs;
    std::vector<Lane> lanes;  ///< The first that fits holds.
    std::vector<Point> points;
    std::vector<StateRange> states;

    /// Null when there is none.
    const Tariff* FindTariff(std::string_view name) const;
    const Lane* FindLane(std::string_view tariff, std::string_view origin_code,
                         std::string_view destination_code) const;
    /// Two letters; empty for a postal code that is malformed or belongs to no state.
    std::string_view StateOf(std::string_view postal_code) const;
    /// In the order of the file.
    std::vector<const Point*> PointsAt(std::string_view postal_code) const;
};

/// Reads the text files of a directory. Throws std::runtime_error with file, line and reason when
/// one is missing or malformed.
RateBase ReadRateBase(const std::string& directory);

}  // namespace hundredweight::reference
