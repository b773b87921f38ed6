// The weight of a shipment line.
#include <hundredweight/exports.h>

#include <cstring>
#include <iterator>

#include "frame/bounds.h"
#include "frame/failure.h"
#include "frame/numbers.h"
#include "frame/text.h"

using namespace hundredweight;

namespace {

constexpr int32_t kInvalidWeight = 106;

int32_t Refuse(RateContext& context) {
    return Fail(context, kInvalidWeight);
}

}  // namespace

int32_t HWT_CALL VerWeight(RateContext* context, const char* weight_text, int32_t line) {
    if (!HasEntry(context->LineWeight, line)) return Refuse(*context);
    const int32_t weight = ReadInteger(TerminatedText(weight_text, sizeof context->LineWeight[0]));
    const int32_t count =
        BoundedCount(context->WeightBreakTotal, std::size(context->WeightBreakName));
    for (int32_t k = 0; k < count; ++k) {
        if (ValidWeight(context, k) == 0) continue;
        if (weight < context->WeightBreakMin[k] || weight > context->WeightBreakMax[k]) continue;
        context->LineWeightIndex[line] = k;
        std::memcpy(context->LineWeight[line], weight_text, sizeof context->LineWeight[line]);
        return 1;
    }
    return Refuse(*context);
}

int32_t HWT_CALL ValidWeight(RateContext* context, int32_t index) {
    if (!HasEntry(context->WeightBreakName, index)) return 0;
    return WholeField(context->WeightBreakName[index]).starts_with("XXX") ? 0 : 1;
}
