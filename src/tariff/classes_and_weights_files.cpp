#include "tariff/classes_and_weights_files.h"

#include <hundredweight/exports.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "frame/numbers.h"
#include "frame/text.h"
#include "tariff/record_fields.h"
#include "tariff/weight_break_cut.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotOpenClasses = 230;
constexpr int32_t kNoClasses = 235;
constexpr int32_t kCannotOpenWeights = 380;
constexpr int32_t kCannotReadWeights = 384;
constexpr int32_t kNoWeights = 385;

constexpr std::size_t kClassLength = 5;

struct WgtRecord {
    char Label[5];
    char UpperBound[8];
    char LowerBound[8];
};
static_assert(sizeof(WgtRecord) == sizeof(RateContext::WgtRecords[0]));

constexpr std::size_t kClassSlots =
    sizeof(RateContext::ClassTable) / sizeof(RateContext::ClassTable[0]);
constexpr std::size_t kWeightRecords = sizeof(RateContext::WgtRecords) / sizeof(WgtRecord);

/// Lays what arrived of a class code into its slot, which ends terminated and without blanks.
void PutClass(char (&slot)[6], const char* code, std::size_t arrived) {
    std::memcpy(slot, code, arrived);
    slot[kClassLength] = '\0';
    std::replace(std::begin(slot), std::end(slot), ' ', '\0');
}

}  // namespace

int32_t ReadClsFile(RateContext& context) {
    const OpenFile file = OpenDataFile(context, ".CLS");
    if (!file) return Fail(context, kCannotOpenClasses);
    char codes[kClassSlots * kClassLength];
    const std::size_t length = file.ReadHead(codes, sizeof codes);
    const std::size_t whole = length / kClassLength;
    for (std::size_t i = 0; i < whole; ++i) {
        PutClass(context.ClassTable[i], codes + i * kClassLength, kClassLength);
    }
    if (whole < kClassSlots) {
        PutClass(context.ClassTable[whole], codes + whole * kClassLength, length % kClassLength);
    }
    context.ClassCount = static_cast<int32_t>(whole);
    return whole > 0 ? 1 : Fail(context, kNoClasses);
}

}  // namespace hundredweight

using namespace hundredweight;

int32_t HWT_CALL ReadWgtFile(RateContext* context) {
    const OpenFile file = OpenDataFile(*context, ".WGT");
    if (!file) return Fail(*context, kCannotOpenWeights);
    const std::size_t count =
        file.ReadHead(context->WgtRecords, sizeof context->WgtRecords) / sizeof(WgtRecord);
    if (count < kWeightRecords) context->ErrorCode = kCannotReadWeights;
    for (std::size_t i = 0; i < count; ++i) {
        WgtRecord record;
        std::memcpy(&record, context->WgtRecords[i], sizeof record);
        CopyText(context->WeightBreakName[i], WholeField(record.Label));
        context->WeightBreakMax[i] = ReadInteger(WholeField(record.UpperBound));
        context->WeightBreakMin[i] = ReadInteger(WholeField(record.LowerBound));
    }
    context->WeightBreakTotal = static_cast<int32_t>(count);
    context->WeightBreakCount = context->WeightBreakTotal;
    CutWeightBreaks(*context);
    return count > 0 ? 1 : Fail(*context, kNoWeights);
}
