#include "rating/request.h"

#include <hundredweight/exports.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>

#include "engine/engine.h"
#include "frame/bounds.h"
#include "frame/failure.h"
#include "frame/numbers.h"
#include "frame/text.h"

namespace hundredweight {
namespace {

constexpr int32_t kDiscountTooHigh = 118;
constexpr int32_t kInvalidZipCombination = 501;

constexpr std::size_t kShipmentLines = 8;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kNoState = "**";

/// The values of both discount lines.
struct DiscountTexts {
    char values[10][5];
};
static_assert(sizeof(DiscountTexts) == sizeof EngineDiscountLine{}.Values);

/// Writes a percentage as a blank and its hundredths in 4 digits. Result: false when it does not
/// fit there.
bool PutDiscount(char (&value)[5], float percent) {
    const float hundredths = percent * 100.0F;
    if (!(hundredths >= 0.0F)) return false;
    const NumberText text = FormatZeroPadded(static_cast<double>(std::abs(hundredths)), 5, 0);
    if (text.size() != sizeof value || !std::string_view(text).starts_with('0')) return false;
    CopyText(value, text);
    value[0] = ' ';
    return true;
}

/// The flat percentage, then one per weight break; nothing when one does not fit its field.
std::optional<DiscountTexts> FormatDiscounts(const RateContext& context) {
    DiscountTexts texts;
    if (!PutDiscount(texts.values[0], context.DiscountFlatPercent)) return std::nullopt;
    for (std::size_t k = 1; k < std::size(texts.values); ++k) {
        if (!PutDiscount(texts.values[k], context.DiscountBreakPercent[k - 1])) return std::nullopt;
    }
    return texts;
}

/// Finds the point codes and the tariff of the shipment's two postal codes.
bool FindTariff(RateContext& context) {
    if (GetTolvexBse(&context) == 0) {
        context.ErrorCode = kInvalidZipCombination;
        return false;
    }
    if (GetTolvexTariffName(&context) == 0) {
        context.ErrorCode = kOutOfScope;
        return false;
    }
    return true;
}

void PutTariffAndPoints(EngineRateRecord& record, const RateContext& context) {
    CopyText(record.TariffName, WholeField(context.TariffName));
    CopyText(record.TariffDate, WholeField(context.LevelFileDate));
    CopyText(record.OrigZip, TerminatedText(context.OrigZip));
    CopyText(record.DestZip, TerminatedText(context.DestZip));
    CopyText(record.OrigState, WholeField(context.OrigState));
    CopyText(record.OrigCity, WholeField(context.OrigCity));
    CopyText(record.DestState, WholeField(context.DestState));
    CopyText(record.DestCity, WholeField(context.DestCity));
    if (WholeField(record.OrigCity) == kNoCity) CopyText(record.OrigState, kNoState);
    if (WholeField(record.DestCity) == kNoCity) CopyText(record.DestState, kNoState);
}

void PutHeader(EngineRateRecord& record, const RateContext& context, int32_t request_code) {
    CopyText(record.LineKind, "01");
    CopyText(record.RequestKind, " MF1");
    CopyText(record.RequestCode, FormatZeroPadded(request_code, 2));
    record.DiscountsSent = 'N';
    record.OptionCode = context.EngineOptionOn != 0 ? context.EngineOptionCode : 'N';
    CopyText(record.LineEnd, kLineEnd);
    FillField(record.Blanks1, ' ');
    FillField(record.Blanks2, ' ');
    record.ShipmentOption = context.ShipmentOptionA;
}

/// Without discounts the tags and the line end keep what an earlier request left.
void PutDiscounts(EngineRateRecord& record, const RateContext& context,
                  const DiscountTexts& texts) {
    if (context.DiscountOn == 0) {
        record.DiscountsSent = 'N';
        std::memset(record.DiscountLine.Values, ' ', sizeof record.DiscountLine.Values);
        std::memset(record.IncreaseLine.Values, ' ', sizeof record.IncreaseLine.Values);
        return;
    }
    record.DiscountOption = context.DefByte31;
    record.DiscountsSent = 'Y';
    CopyText(record.DiscountLine.Tag, "D%");
    CopyText(record.IncreaseLine.Tag, "I%");
    std::memcpy(record.DiscountLine.Values, texts.values, sizeof texts.values);
    std::memcpy(record.IncreaseLine.Values, texts.values, sizeof texts.values);
    CopyText(record.DiscountLine.LineEnd, kLineEnd);
}

void PutFactor(EngineRateRecord& record, const RateContext& context) {
    float factor = 1.0F;
    if (context.RateFactor != 0.0F && context.RateFactor != 1.0F) factor = context.RateFactor;
    if (context.ConversionOn != 0) factor = factor * context.ConversionRate;
    const float ten_thousandths = factor * 10000.0F;
    CopyText(record.Factor, factor != 1.0F
                                ? FormatZeroPadded(static_cast<double>(ten_thousandths), 5, 0)
                                : NumberText("10000"));
}

void ClearAnswer(EngineRateRecord& record) {
    FillField(record.BreakKinds, ' ');
    std::memset(record.BreakWeights, 0, sizeof record.BreakWeights);
    std::memset(record.BreakAmounts, 0, sizeof record.BreakAmounts);
    record.Zero = 0;
    record.BreakEntryCount = 0;
}

/// The class that a line is rated at: the tariff's when the profile's class map replaced the typed
/// one.
std::string_view RatedClass(const RateContext& context, std::size_t line) {
    const int32_t index = context.LineClassIndex[line];
    const bool mapped = context.Profile.ClassMapOn != 0 && context.LineClassMark[line][0] == '*';
    const bool in_table = HasEntry(context.ClassTable, index);
    return mapped && in_table ? TerminatedText(context.ClassTable[index])
                              : TerminatedText(context.LineClass[line]);
}

void PutClassLines(EngineRateRecord& record, const RateContext& context) {
    std::memset(record.ClassLines, ' ', sizeof record.ClassLines);
    for (std::size_t i = 0; i < kShipmentLines; ++i) {
        EngineClassLine& line = record.ClassLines[i];
        CopyText(line.Kind, "02");
        FillField(line.ClassCode, '\0');
        CopyText(line.ClassCode, RatedClass(context, i));
        CopyText(line.Weight,
                 ZeroPadText(TerminatedText(context.LineWeight[i]), sizeof line.Weight));
        FillField(line.Rate, '\0');
        FillField(line.Charge, '\0');
        CopyText(line.LineEnd, kLineEnd);
    }
}

}  // namespace

int32_t PrepareEngineRequest(RateContext& context, int32_t request_code) {
    EngineRateRecord& record = engine.EngineRateRecord;
    DiscountTexts discounts{};
    if (context.DiscountOn != 0) {
        const auto formatted = FormatDiscounts(context);
        if (!formatted) return Fail(context, kDiscountTooHigh);
        discounts = *formatted;
    }
    // The record's head, from behind its start mark up to the class lines.
    std::memset(record.LineKind, ' ',
                offsetof(EngineRateRecord, ClassLines) - offsetof(EngineRateRecord, LineKind));
    if (context.NameTablesLoaded == 'Y' && !FindTariff(context)) return 0;
    PutTariffAndPoints(record, context);
    PutHeader(record, context, request_code);
    PutDiscounts(record, context, discounts);
    record.StartMark = 'F';
    record.EndMark = '*';
    PutFactor(record, context);
    ClearAnswer(record);
    PutClassLines(record, context);
    return 1;
}

}  // namespace hundredweight
