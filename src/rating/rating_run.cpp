#include "rating/rating_run.h"

#include <hundredweight/exports.h>

#include <string_view>

#include "engine/engine.h"
#include "frame/bounds.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "rating/charges.h"
#include "rating/classes_and_weights.h"
#include "rating/engine_status.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotRate = -1;
constexpr std::string_view kNoStatus = "    ";
constexpr std::string_view kIgnoredStatus = "9999";

bool IsStarted() {
    return engine.entry_points.Tolvex_RateShipment2Ex != nullptr && engine.EngineResultBlock &&
           engine.EngineListBlock;
}

/// Ends the discounts behind the last weight break in use.
void PutBreakCut(EngineRateRecord& record, const RateContext& context) {
    if (context.DefBreakCount[0] == '\0') return;
    const int32_t slot = ReadInteger(WholeField(context.DefBreakIndex)) +
                         ReadInteger(WholeField(context.DefBreakCount)) + 1;
    if (!HasEntry(record.DiscountLine.Values, slot)) return;
    CopyText(record.DiscountLine.Values[slot], " 9999");
    CopyText(record.IncreaseLine.Values[slot], " 9999");
}

bool HasStatus(const EngineRateRecord& record) {
    const std::string_view status = WholeField(record.Status);
    return status != kNoStatus && status.front() != '\0' && status != kIgnoredStatus;
}

}  // namespace

void LayOutEngineTables(RateContext& context) {
    const EngineTablesSection& tables = engine.EngineRateRecord.Tables;
    const bool usable = tables.ClassCount != 0 && tables.ClassCount <= 20 &&
                        tables.WeightBreakCount != 0 && tables.WeightBreakCount <= 9;
    SetClassesAndWeights(&context, usable ? kTablesFromAnswer : kTablesFromRequest,
                         context.ClassWeightsArg);
}

int32_t RunEngineRating(RateContext& context) {
    EngineRateRecord& record = engine.EngineRateRecord;
    PutBreakCut(record, context);
    CopyText(record.Status, kNoStatus);
    if (!IsStarted()) {
        if (context.QuietEngineErrors == 0) context.ErrorCode = kEngineFailed;
        return kRatingFailed;
    }
    engine.entry_points.Tolvex_RateShipment2Ex(engine.EngineHandle, &record,
                                               engine.EngineResultBlock.get());
    LayOutEngineTables(context);
    if (engine.EngineResultBlock->Verdict == kCannotRate) {
        if (context.QuietEngineErrors == 0) context.ErrorCode = kEngineFailed;
        return kRatingFailed;
    }
    int32_t result = kRated;
    if (HasStatus(record)) {
        HandleEngineStatus(context);
        const int32_t code = context.ErrorCode;
        if (code == kEngineRefused || code == kEngineFailed || code == kNoAlternatives) {
            result = kRatingFailed;
        }
    }
    BuildChargeLines(context);
    return result;
}

}  // namespace hundredweight
