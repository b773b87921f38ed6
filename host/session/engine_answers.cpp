#include "session/engine_answers.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <algorithm>
#include <iterator>

#include "session/messages.h"
#include "text/field_text.h"

namespace cwt {
namespace {

constexpr int32_t kStandardTables = 0;

}  // namespace

std::vector<std::string> ClassesOf(const RateContext& context) {
    std::vector<std::string> classes;
    classes.reserve(std::size(context.ClassTable));
    for (int32_t i = 0; i < context.ClassCount; ++i) {
        classes.push_back(TextOf(context.ClassTable[i]));
    }
    return classes;
}

std::vector<WeightBreak> WeightBreaksOf(const RateContext& context) {
    std::vector<WeightBreak> breaks;
    breaks.reserve(std::size(context.WeightBreakName));
    for (int32_t i = 0; i < context.WeightBreakCount; ++i) {
        breaks.push_back({TextOf(context.WeightBreakName[i]), context.WeightBreakMin[i]});
    }
    return breaks;
}

std::vector<std::string> OfferedCities(const RateContext& context) {
    std::vector<std::string> cities;
    for (int32_t i = 0; i < context.EngineListCount; ++i) {
        const EngineAlternative offer = context.EngineList[i];
        cities.push_back(fmt::format("{} {}", TextOf(offer.Text), TextOf(offer.Code)));
    }
    return cities;
}

bool IsAskedByName(const RateContext& context) {
    const std::string tariff = TextOf(context.TariffName);
    return tariff.size() >= sizeof context.TariffName - 1 && tariff[3] != ' ';
}

void AdmitStandardClasses(RateContext& context) {
    if (TextOf(context.ClassTable[0]) == kAllKinds)
        SetClassesAndWeights(&context, kStandardTables, 0);
}

EngineTables AskForTables(RateContext& copy) {
    if (!IsAskedByName(copy)) return {};
    copy.WgtLoaded = 0;  // The set's own weight breaks would stand.
    copy.DefBreakCount[0] = '\0';
    SetClassesAndWeights(&copy, kEngineTables, 0);
    if (!TakeMessageBoxes().empty()) return {};
    EngineTables tables = {ClassesOf(copy), WeightBreaksOf(copy)};
    if (!std::ranges::is_sorted(tables.breaks, {}, &WeightBreak::weight)) tables.breaks.clear();
    return tables;
}

std::optional<std::size_t> EngineTables::BreakOf(int weight) const {
    const auto above = std::ranges::upper_bound(breaks, weight, {}, &WeightBreak::weight);
    if (above == breaks.begin()) return std::nullopt;
    return static_cast<std::size_t>(above - breaks.begin()) - 1;
}

}  // namespace cwt
