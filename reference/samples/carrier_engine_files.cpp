#include <fmt/format.h>

#include <iterator>
#include <string>
#include <string_view>

#include "reference/samples/carrier_files.h"
#include "reference/samples/file_contents.h"

namespace hundredweight::samples {
namespace {

constexpr std::size_t kScales = 2000;
constexpr std::size_t kFirstScale = 1000;
constexpr std::size_t kPoints = 43000;

/// Rows of one of the sample's files that the national tariff's own do not replace.
std::string RowsOfOthers(const char* file) {
    const std::string rows = EngineFiles().at(file);
    std::string kept;
    for (std::size_t start = 0; start < rows.size();) {
        const std::size_t end = rows.find('\n', start) + 1;
        const std::string_view row = std::string_view(rows).substr(start, end - start);
        if (!row.starts_with(kNationalTariff)) kept += row;
        start = end;
    }
    return kept;
}

/// A class and what it pays for every 1000 that class 100 pays.
struct ClassRelation {
    std::string_view class_code;
    int permille;
};

constexpr ClassRelation kClassRelations[] = {
    {"500", 3900}, {"400", 3100}, {"300", 2400}, {"250", 2050}, {"200", 1720}, {"175", 1520},
    {"150", 1330}, {"125", 1160}, {"110", 1060}, {"100", 1000}, {"92", 930},   {"85", 860},
    {"77", 790},   {"70", 735},   {"65", 690},   {"60", 645},   {"55", 605},   {"50", 565},
};

/// Dollars of a rate that pays so much for every 1000 cents of class 100, rounded to whole dimes,
/// as rates are quoted.
std::string RateText(int class_100, int permille) {
    const int dimes = (class_100 * permille + 5000) / 10'000;
    return fmt::format("{}.{}0", dimes / 10, dimes % 10);
}

/// Cents per hundredweight of class 100, at the lowest weights of the first scale.
constexpr int kFirstRate = 4000;
/// What each of the national tariff's nine breaks pays for every 1000 that the first one pays.
constexpr int kBreakPermille[] = {1000, 840, 700, 590, 470, 380, 280, 235, 210};

}  // namespace

std::string CarrierRates() {
    std::string text = RowsOfOthers("tolvex-rates.txt");
    for (std::size_t scale = 0; scale < kScales; ++scale) {
        const int highest = kFirstRate + 5 * static_cast<int>(scale);
        for (const ClassRelation& relation : kClassRelations) {
            text += fmt::format("{} | {} | {} |", kNationalTariff, kFirstScale + scale,
                                relation.class_code);
            for (const int permille : kBreakPermille) {
                text += ' ' + RateText(highest * permille / 1000, relation.permille);
            }
            text += "\n";
        }
    }
    return text;
}

std::string CarrierLanes() {
    std::string text = RowsOfOthers("tolvex-lanes.txt");
    const std::vector<ServedPrefix> prefixes = ServedPrefixes();
    const std::size_t count = prefixes.size();
    for (std::size_t from = 0; from < count; ++from) {
        for (std::size_t to = 0; to < count; ++to) {
            if (from == to) continue;
            const std::size_t scale = kFirstScale + (37 * from + 101 * to) % kScales;
            const std::size_t minimum = 80 + (from + to) % 120;
            const char* const arbitrary = to % 8 == 0 ? "12.50" : "0.00";
            fmt::format_to(std::back_inserter(text), "{} | {} | {} | {} | {}.00 | {}\n",
                           kNationalTariff, prefixes[from].prefix, prefixes[to].prefix, scale,
                           minimum, arbitrary);
        }
    }
    return text;
}

std::string CarrierPoints() {
    constexpr std::string_view kStems[] = {"Ash", "Birch", "Cedar", "Elm", "Maple", "Oak", "Pine"};
    constexpr std::string_view kEnds[] = {"bury", "dale", "field", "ford", "ton", "ville"};
    std::string text = EngineFiles().at("tolvex-points.txt");
    std::vector<ServedPrefix> prefixes = ServedPrefixes();
    std::erase_if(prefixes, [](const ServedPrefix& each) { return each.prefix.front() > '9'; });
    for (std::size_t i = 0; i < kPoints; ++i) {
        // Each prefix has the same number of postal codes, but for one, and they ascend.
        const std::size_t place = i * prefixes.size();
        const auto& [prefix, state] = prefixes[place / kPoints];
        fmt::format_to(std::back_inserter(text), "{}{:02} | {}{} | {} | {}\n", prefix,
                       100 * (place % kPoints) / kPoints, kStems[i % std::size(kStems)],
                       kEnds[i % std::size(kEnds)], state, i % 5 == 0 ? 'I' : 'D');
    }
    return text;
}

}  // namespace hundredweight::samples
