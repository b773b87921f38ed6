#include "tariff/weight_break_cut.h"

#include "frame/bounds.h"
#include "frame/numbers.h"
#include "frame/text.h"

namespace hundredweight {

void CutWeightBreaks(RateContext& context) {
    if (context.DefBreakCount[0] == '\0') return;
    const int32_t index = ReadInteger(WholeField(context.DefBreakIndex));
    const int32_t kept = index + ReadInteger(WholeField(context.DefBreakCount));
    if (index >= context.WeightBreakTotal || kept >= context.WeightBreakCount || kept < 1 ||
        !HasEntry(context.WeightBreakName, kept)) {
        return;
    }
    context.WeightBreakMax[kept - 1] = kHighestWeight;
    FillField(context.WeightBreakName[kept], '\0');
    CopyText(context.WeightBreakName[kept], "XXX");
    context.WeightBreakCount = kept;
}

}  // namespace hundredweight
