// The discount file, and the list in which a shipment's discount is settled.
#include <hundredweight/exports.h>

#include "discounts/discount_records.h"
#include "discounts/discount_sources.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "tariff/single_record.h"

using namespace hundredweight;

namespace {

constexpr SingleRecord kDiscountFile = {".DIS", HWT_FIELD(DiscRecord),
                                        sizeof(RateContext::DiscRecord), 250, 254};
constexpr int32_t kSettleList = 0;
constexpr int16_t kOnePercentPerGroup = 1;
constexpr char kOneGroup = '1';

/// A weight-break record of the tariff, as far as discounts read it.
struct TariffBreak {
    char HostBytes[13];
    char LowestWeight[8];
};
static_assert(sizeof(TariffBreak) == sizeof(RateContext::WgtRecords[0]));

int32_t CountWeightColumns(const RateContext& context) {
    int32_t count = 0;
    while (count < kWeightColumns) {
        const char mark = WeightColumnAt(context, count).Mark;
        if (mark == ' ' || mark == '\0') break;
        ++count;
    }
    return count;
}

void SettleList(RateContext& context) {
    ClearDiscList(&context);
    if (context.DiscountOn == 0) return;
    if (context.Profile.DiscModeC != 0) {
        ApplyGroupDiscount(context);
        for (int32_t i = 0; i < DiscountColumns(context); ++i) ApplyGroupBreakPercent(context, i);
    }
    if (context.Profile.DiscModeP != 0) ApplyEntryDiscount(context);
    if (context.DefModeZ != 0) ApplyZipDiscount(context);
}

/// Whether a weight column of the discount file starts at or above the tariff's weight break.
bool ReachesBreak(const RateContext& context, int32_t column) {
    TariffBreak tariff_break;
    std::memcpy(&tariff_break, context.WgtRecords[column], sizeof tariff_break);
    return ReadInteger(WholeField(WeightColumnAt(context, column).LowestWeight)) >=
           ReadInteger(WholeField(tariff_break.LowestWeight));
}

void CopyGroups(const RateContext& context, HostDiscountTable& table) {
    const bool one_percent = table.TableType == kOnePercentPerGroup;
    const bool one_group = context.DisGroupSelector == kOneGroup;
    for (int32_t g = 0; g < kGroups; ++g) {
        const DiscountGroup group = GroupAt(context, g);
        const DiscountGroup flat_group = one_group ? GroupAt(context, 0) : group;
        table.Groups[g].Floor = ReadSingle(WholeField(group.Floor));
        table.Groups[g].FlatPercent = ReadSingle(one_percent ? WholeField(flat_group.Percent[0])
                                                             : WholeField(group.FlatPercent));
        for (int32_t i = 0; i < DiscountColumns(context); ++i) {
            if (!ReachesBreak(context, i)) continue;
            table.Groups[g].BreakPercent[i] =
                ReadSingle(WholeField(group.Percent[one_percent ? 0 : i]));
        }
    }
}

}  // namespace

int32_t HWT_CALL ReadDiscFile(RateContext* context) {
    if (ReadRecord(*context, kDiscountFile) == 0) return 0;
    context->DiscBreakCount = CountWeightColumns(*context);
    return 1;
}

void HWT_CALL ClearDiscList(RateContext* context) {
    context->DiscountFloor = 0;
    context->DiscountFlatPercent = 0;
    for (int32_t i = 0; i < DiscountColumns(*context); ++i) context->DiscountBreakPercent[i] = 0;
    FillField(context->DiscountFlatText, '\0');
    FillField(context->DiscountFloorText, '\0');
}

void HWT_CALL LoadDiscounts(RateContext* context, HostDiscountTable* table, int32_t mode) {
    if (mode == kSettleList) {
        SettleList(*context);
        return;
    }
    CopyGroups(*context, *table);
    if (context->DefModeZ != 0) ApplyZipDiscount(*context);
}
