#include "rating/charges.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "engine/engine.h"
#include "frame/bounds.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "rating/break_lists.h"
#include "rating/request.h"
#include "rating/zmc_lookup.h"

namespace hundredweight {
namespace {

constexpr std::size_t kShortestRateCode = 6;

/// The value of an amount that the engine wrote with zeros at its head.
template <std::size_t Size>
double StrippedValue(const char (&field)[Size]) {
    char stripped[Size] = {};
    StripLeadingZeros(field, stripped, Size);
    return ReadDecimal(WholeField(stripped));
}

template <std::size_t Size>
NumberText WeightText(const char (&field)[Size]) {
    return FormatNonZero(ReadInteger(WholeField(field)), 6);
}

void PutMinimumCharge(RateContext& context, const EngineRateRecord& record) {
    const float sum = ReadSingle(WholeField(record.MinChargeFirst)) +
                      ReadSingle(WholeField(record.MinChargeSecond));
    const float zmc_minimum = context.ZmcMinimum;
    const float minimum = sum > zmc_minimum ? sum : zmc_minimum;
    PutText(context.MinChargeText, FormatZeroPadded(static_cast<double>(minimum), 7, 2));
}

void PutRateCode(RateContext& context, const EngineRateRecord& record) {
    NumberText code;
    for (const char character : record.RateCode) {
        if (character != ' ' && character != '\0') code.Append(1, character);
    }
    if (code.size() < kShortestRateCode) code = FormatZeroPadded(ReadInteger(code), 6);
    FillField(context.RateCode, '\0');
    CopyText(context.RateCode, code);
}

/// Writes rate and charge of every line. Result: the sum of the charges as printed.
float PutLines(RateContext& context, const EngineRateRecord& record) {
    float gross = 0.0F;
    for (std::size_t i = 0; i < std::size(context.LineRateText); ++i) {
        const EngineClassLine& line = record.ClassLines[i];
        FillField(context.LineRateText[i], '\0');
        PutText(context.LineRateText[i], FormatDecimal(StrippedValue(line.Rate), 9, 2));
        FillField(context.LineChargeText[i], '\0');
        PutText(context.LineChargeText[i], FormatDecimal(StrippedValue(line.Charge), 11, 2));
        gross += ReadSingle(WholeField(context.LineChargeText[i]));
    }
    return gross;
}

void PutPoints(RateContext& context, const EngineRateRecord& record) {
    if (WholeField(record.OrigCity) != kNoCity) {
        FillField(context.OrigState, '\0');
        CopyText(context.OrigState, WholeField(record.OrigState));
    }
    if (WholeField(record.DestCity) != kNoCity) {
        FillField(context.DestState, '\0');
        CopyText(context.DestState, WholeField(record.DestState));
    }
    if (context.UseServiceGuide == 0) {
        context.OrigServiceCode = record.OrigServiceCode;
        context.DestServiceCode = record.DestServiceCode;
    }
}

/// Writes the extra line's charge and, with it added to the lines', the gross charge.
void PutGrossCharge(RateContext& context, const EngineRateRecord& record, float lines) {
    const double extra = StrippedValue(record.ExtraCharge);
    PutText(context.ExtraChargeText, FormatDecimal(extra, 9, 2));
    const float gross = lines + static_cast<float>(extra);
    PutText(context.GrossChargeText, FormatDecimal(static_cast<double>(gross), 11, 2));
}

void PutWeights(RateContext& context, const EngineRateRecord& record) {
    PutText(context.BilledWeightText, WeightText(record.BilledWeight));
    CopyText(context.DiscountPctText, WholeField(record.DiscountPercent));
    PutText(context.TotalWeightText, WeightText(record.TotalWeight));
    PutText(context.ExtraWeightText, WeightText(record.ExtraWeight));
    PutText(context.ExtraRateText, FormatDecimal(StrippedValue(record.ExtraRate), 7, 2));
}

/// The surcharge percentage, by the side of the surcharge break that the billed weight lies on.
float ChooseSurchargePercent(RateContext& context) {
    const int32_t index = ReadInteger(WholeField(context.DefBreakIndex));
    const int32_t billed_weight = ReadInteger(TerminatedText(context.BilledWeightText));
    const bool low = !HasEntry(context.WeightBreakName, index) ||
                     index >= context.WeightBreakCount ||
                     billed_weight < context.WeightBreakMin[index];
    context.SurchargeBreakSide = low ? index - 1 : index + 1;
    if (low) return context.DefFactorLow;
    return context.DefFactorHigh;
}

void PutSurcharge(RateContext& context) {
    double amount = 0;
    if (context.SurchargeOn != 0) {
        const auto percent = static_cast<double>(ChooseSurchargePercent(context));
        double base = ReadSingle(TerminatedText(context.GrossChargeText));
        if (context.SurchargeOnGross != 'Y') {
            base -= ReadDecimal(WholeField(context.DiscountAmountText));
        }
        amount = base * percent / 100;
    }
    PutText(context.SurchargeText, FormatDecimal(amount, 9, 2));
}

}  // namespace

void StripLeadingZeros(const char* source, char* destination, int32_t n) {
    const std::string_view text(source, static_cast<std::size_t>(n));
    const std::size_t zeros = std::min(text.find_first_not_of('0'), text.size());
    std::memcpy(destination, source + zeros, text.size() - zeros);
}

void BuildChargeLines(RateContext& context) {
    const EngineRateRecord& record = engine.EngineRateRecord;
    PutMinimumCharge(context, record);
    PutRateCode(context, record);
    context.ZmcFloor = 0.0F;
    context.ZmcMinimum = 0.0F;
    if (context.ZmcCount > 0) LookupZmc(context);
    CopyText(context.EngineRateTable, WholeField(record.RateTable));
    const float lines = PutLines(context, record);
    PutPoints(context, record);
    CopyText(context.NetChargeText, WholeField(record.NetCharge));
    PutGrossCharge(context, record, lines);
    CopyText(context.DiscountAmountText, WholeField(record.DiscountAmount));
    PutWeights(context, record);
    BuildBreakLists(context);
    PutSurcharge(context);
    CopyText(context.BilledWeightCopy, WholeField(context.BilledWeightText));
}

}  // namespace hundredweight
