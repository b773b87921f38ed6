#include <cstdio>
#include <span>
#include <string>
#include <string_view>

#include "reference/samples/file_contents.h"
#include "reference/samples/network.h"
#include "reference/samples/postal_map.h"

namespace hundredweight::samples {
namespace {

constexpr ClassRelation kAllKinds[] = {{"FAK", 820}};

constexpr int kElevenBreaks[] = {1, 500, 1000, 2000, 5000, 8000, 10000, 15000, 20000, 30000, 40000};
constexpr int kSixBreaks[] = {1, 500, 1000, 2000, 5000, 10000};

struct SampleTariff {
    std::string_view name;
    std::span<const ClassRelation> classes;
    std::span<const int> breaks;
};

constexpr SampleTariff kTariffs[] = {
    {"BureauE1", kClasses, kWeightBreaks}, {"SMPLNATL", kClasses, kWeightBreaks},
    {"SMPLFAK1", kAllKinds, kSixBreaks},   {"SMPLWIDE", kClasses, kElevenBreaks},
    {"BureauW1", kClasses, kElevenBreaks},
};

/// Cents per hundredweight of class 100 at each break.
constexpr int kScale2041[] = {8840, 7420, 6200, 5210, 4130, 3370, 2490, 2080, 1860};
constexpr int kScale2052[] = {9730, 8160, 6890, 5740, 4610, 3720, 2780, 2310, 2090};
constexpr int kScale3010[] = {8120, 6880, 5790, 4860, 3910, 3140};
constexpr int kScale4007[] = {14210, 12090, 10180, 8770, 7060, 6450, 5820, 5110, 4390, 3740, 3320};

struct SampleScale {
    std::string_view tariff;
    std::string_view code;
    std::span<const int> class_100;
};

constexpr SampleScale kScales[] = {
    {"SMPLNATL", "2041", kScale2041},
    {"SMPLNATL", "2052", kScale2052},
    {"SMPLFAK1", "3010", kScale3010},
    {"SMPLWIDE", "4007", kScale4007},
};

constexpr const char* kPoints =
    "# postal code | city | state | service\n"
    "10001 | New York | NY | D\n"
    "11373 | Elmhurst | NY | D\n"
    "11373 | Flushing | NY | D\n"
    "30303 | Atlanta | GA | D\n"
    "30339 | Atlanta | GA | D\n"
    "30339 | Vinings | GA | I\n"
    "60521 | Hinsdale | IL | D\n"
    "60521 | Oak Brook | IL | D\n"
    "60601 | Chicago | IL | D\n"
    "75201 | Dallas | TX | D\n"
    "90012 | Los Angeles | CA | D\n"
    "K1A0B1 | Ottawa | ON | I\n"
    "M5H2N2 | Toronto | ON | D\n";

std::string Join(const auto&... parts) {
    std::string text;
    (text.append(parts), ...);
    return text;
}

std::string TariffsFile() {
    std::string text = "# tariff | effective | classes | lowest weight of each break, pounds\n";
    for (const auto& tariff : kTariffs) {
        text += Join(tariff.name, " | ", kEffectiveDate, " |");
        for (const auto& relation : tariff.classes) text += Join(" ", relation.class_code);
        text += " |";
        for (const int weight : tariff.breaks) text += Join(" ", std::to_string(weight));
        text += "\n";
    }
    return text;
}

const SampleTariff& TariffNamed(std::string_view name) {
    const auto* tariff = std::begin(kTariffs);
    while (tariff->name != name) ++tariff;
    return *tariff;
}

std::string RatesFile() {
    std::string text = "# tariff | scale | class | dollars per hundredweight at each break\n";
    for (const auto& scale : kScales) {
        for (const auto& relation : TariffNamed(scale.tariff).classes) {
            text += Join(scale.tariff, " | ", scale.code, " | ", relation.class_code, " |");
            for (const int class_100 : scale.class_100) {
                text += Join(" ", RateText(class_100, relation.permille));
            }
            text += "\n";
        }
    }
    return text;
}

std::string LanesFile() {
    std::string text =
        "# tariff | origin prefixes | destination prefixes | scale | minimum | arbitrary\n";
    for (const auto& lane : kLanes) {
        if (lane.scale.empty()) continue;
        const Area& origin = kAreas[lane.origin];
        const Area& destination = kAreas[lane.destination];
        text += Join(lane.tariff, " | ", origin.low, "-", origin.high, " | ", destination.low, "-",
                     destination.high, " | ", lane.scale, " | ", lane.minimum, " | ",
                     lane.arbitrary, "\n");
    }
    return text;
}

std::string StatesFile() {
    std::string text = "# postal-code prefixes | state or province\n";
    for (const auto& range : PostalMap()) {
        text += Join(range.low, "-", range.high, " | ", range.state, "\n");
    }
    return text;
}

}  // namespace

std::string RateText(int class_100, int permille) {
    const int dimes = (class_100 * permille + 5000) / 10'000;
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d0", dimes / 10, dimes % 10);
    return text;
}

FileContents EngineFiles() {
    return {{"tolvex-tariffs.txt", TariffsFile()},
            {"tolvex-rates.txt", RatesFile()},
            {"tolvex-lanes.txt", LanesFile()},
            {"tolvex-points.txt", kPoints},
            {"tolvex-states.txt", StatesFile()}};
}

}  // namespace hundredweight::samples
