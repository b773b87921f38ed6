// The carrier of the samples: its classes and weight breaks, the areas that it serves and the lanes
// between them.
#pragma once

#include <cstddef>
#include <string_view>

namespace hundredweight::samples {

/// Day from which the sample tariffs hold.
inline constexpr std::string_view kEffectiveDate = "01-06-2025";

/// A class and what it pays for every 1000 that class 100 pays.
struct ClassRelation {
    std::string_view class_code;
    int permille;
};

inline constexpr ClassRelation kClasses[] = {
    {"500", 3900}, {"400", 3100}, {"300", 2400}, {"250", 2050}, {"200", 1720}, {"175", 1520},
    {"150", 1330}, {"125", 1160}, {"110", 1060}, {"100", 1000}, {"92", 930},   {"85", 860},
    {"77", 790},   {"70", 735},   {"65", 690},   {"60", 645},   {"55", 605},   {"50", 565},
};

/// Lowest weight of each break in pounds.
inline constexpr int kWeightBreaks[] = {1, 500, 1000, 2000, 5000, 10000, 20000, 30000, 40000};

/// Postal-code prefixes that share one base-rate point.
struct Area {
    std::string_view point_code;
    std::string_view low;
    std::string_view high;
};

/// In ascending order of the prefixes.
inline constexpr Area kAreas[] = {
    {"PTNY01", "100", "149"}, {"PTGA01", "300", "319"}, {"PTIL01", "600", "629"},
    {"PTTX01", "750", "799"}, {"PTCA01", "900", "961"}, {"PTON01", "K0A", "P9Z"},
};
enum AreaIndex : std::size_t { kNewYork, kGeorgia, kIllinois, kTexas, kCalifornia, kOntario };

struct NetworkLane {
    AreaIndex origin;
    AreaIndex destination;
    std::string_view tariff;
    std::string_view scale;      ///< Empty: the tariff names the lane but has no rates for it.
    std::string_view minimum;    ///< Dollars.
    std::string_view arbitrary;  ///< Dollars.
};

inline constexpr NetworkLane kLanes[] = {
    {kGeorgia, kIllinois, "SMPLNATL", "2041", "95.00", "12.50"},
    {kIllinois, kGeorgia, "SMPLNATL", "2041", "95.00", "0.00"},
    {kNewYork, kGeorgia, "SMPLNATL", "2052", "102.00", "0.00"},
    {kIllinois, kOntario, "SMPLNATL", "2052", "138.00", "25.00"},
    {kOntario, kIllinois, "SMPLNATL", "2052", "138.00", "0.00"},
    {kGeorgia, kTexas, "SMPLFAK1", "3010", "89.00", "0.00"},
    {kNewYork, kCalifornia, "SMPLWIDE", "4007", "155.00", "0.00"},
    {kCalifornia, kNewYork, "SMPLWIDE", "", "", ""},
};

}  // namespace hundredweight::samples
