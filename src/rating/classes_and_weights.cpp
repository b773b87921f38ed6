#include "rating/classes_and_weights.h"

#include <hundredweight/exports.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <string_view>

#include "engine/engine.h"
#include "frame/bounds.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "platform/message_box.h"
#include "tariff/standard_tables.h"
#include "tariff/weight_break_cut.h"

namespace hundredweight {

namespace {

constexpr std::size_t kClassLength = 3;
constexpr std::string_view kAllKinds = "FAK";

/// An engine is asked by name only when the name fills its field and its fourth character does
/// too.
bool IsUsableTariffName(const RateContext& context) {
    const std::string_view name = TerminatedText(context.TariffName);
    return name.size() >= sizeof EngineTablesRecord{}.TariffName && name[3] != ' ';
}

void PutStandardClasses(char (&classes)[20][6]) {
    std::memset(classes, 0, sizeof classes);
    for (std::size_t i = 0; i < StandardClassList.size(); ++i) {
        CopyText(classes[i], StandardClassList[i]);
    }
}

/// Asks the engine for the tables of the tariff. A failure leaves them as far as they came.
EngineTablesSection RequestTables(const RateContext& context) {
    EngineTablesRecord request = {};
    CopyText(request.TariffName, WholeField(context.TariffName));
    CopyText(request.TariffDate, WholeField(context.LevelFileDate));
    const auto get_tables = engine.entry_points.Tolvex_GetTablesEx;
    if (get_tables == nullptr || get_tables(engine.EngineHandle, &request) == 0) {
        platform::ShowMessageBox(nullptr, "(GetTablesEx)Error getting Classes/Weights",
                                 platform::ApplicationName(), platform::kBoxOk);
    }
    return request.Tables;
}

/// The value of a number's first characters.
int32_t LeadingValue(int32_t number, std::size_t characters) {
    return ReadInteger(std::string_view(FormatInteger(number, 1)).substr(0, characters));
}

void LayOutWeightBreaks(RateContext& context, const EngineTablesSection& tables) {
    constexpr std::size_t kLowerLength = 5;
    constexpr std::size_t kUpperLength = 7;
    std::memset(context.WeightBreakName, 0, sizeof context.WeightBreakName);
    const int32_t count = BoundedCount(tables.WeightBreakCount, std::size(context.WeightBreakName));
    context.WeightBreakCount = count;
    for (int32_t i = 0; i < count; ++i) {
        const int32_t lowest = LeadingValue(tables.WeightBreaks[i], kLowerLength);
        context.WeightBreakMin[i] = lowest;
        context.WeightBreakMax[i] = i == count - 1
                                        ? kHighestWeight
                                        : LeadingValue(tables.WeightBreaks[i + 1], kUpperLength);
        CopyText(context.WeightBreakName[i], NumberText(FormatInteger(lowest, 1)).Append("#>"));
    }
}

/// Stores the classes and weight breaks that the engine gave, the code of a slot as `read_code`
/// finds it.
template <class ReadCode>
void LayOutTables(RateContext& context, const EngineTablesSection& tables, ReadCode read_code) {
    std::memset(context.ClassTable, 0, sizeof context.ClassTable);
    context.ClassCount = BoundedCount(tables.ClassCount, std::size(context.ClassTable));
    for (std::size_t i = 0; i < std::size(context.ClassTable); ++i) {
        CopyText(context.ClassTable[i], read_code(tables.ClassCodes[i]));
    }
    EngineRateRecord& record = engine.EngineRateRecord;
    if (WholeField(record.Tables.ClassCodes[0]).starts_with(kAllKinds)) {
        SetStandardClasses(context, record);
    }
    if (context.WgtLoaded == 0) LayOutWeightBreaks(context, tables);
    context.ClassWeightsSet = 1;
}

}  // namespace

void SetStandardClasses(RateContext& context, EngineRateRecord& record) {
    PutStandardClasses(record.Tables.ClassCodes);
    PutStandardClasses(context.ClassTable);
    record.Tables.ClassCount = static_cast<int16_t>(StandardClassList.size());
    context.ClassCount = static_cast<int32_t>(StandardClassList.size());
    context.ClassWeightsSet = 1;
}

void SetStandardTables(RateContext& context, EngineRateRecord& record) {
    SetStandardClasses(context, record);
    if (context.WgtLoaded != 0) return;
    std::memset(context.WeightBreakName, 0, sizeof context.WeightBreakName);
    for (std::size_t i = 0; i < StandardWeightBreaks.size(); ++i) {
        CopyText(context.WeightBreakName[i], StandardWeightBreaks[i].name);
        context.WeightBreakMin[i] = StandardWeightBreaks[i].min;
        context.WeightBreakMax[i] = StandardWeightBreaks[i].max;
    }
    context.WeightBreakCount = static_cast<int32_t>(StandardWeightBreaks.size());
}

}  // namespace hundredweight

using namespace hundredweight;

void HWT_CALL SetClassesAndWeights(RateContext* context, int32_t mode, int32_t /*reserved*/) {
    if (context->UseEngine == 0) return;
    const bool may_ask = IsUsableTariffName(*context);
    if (may_ask && mode == kTablesFromRequest) {
        LayOutTables(*context, RequestTables(*context),
                     [](const char(&slot)[6]) { return WholeField(slot).substr(0, kClassLength); });
    } else if (may_ask && mode == kTablesFromAnswer) {
        LayOutTables(*context, engine.EngineRateRecord.Tables, [](const char(&slot)[6]) {
            return TerminatedText(slot, sizeof slot - 1).substr(0, kClassLength);
        });
    } else {
        SetStandardTables(*context, engine.EngineRateRecord);
    }
    context->WeightBreakTotal = context->WeightBreakCount;
    CutWeightBreaks(*context);
}
