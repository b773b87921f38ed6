// The user's defaults: DEF, and MEF for the Mexican part of the tariff set.
#include <hundredweight/exports.h>

#include "frame/text.h"
#include "tariff/single_record.h"
#include "tariff/written_file.h"

using namespace hundredweight;

namespace {

constexpr SingleRecord kDef = {".DEF", HWT_FIELD(DefRecord), sizeof(RateContext::DefRecord), 240,
                               244};
constexpr WriteCodes kDefCodes = {241, 245};
constexpr WriteCodes kMefCodes = {160, 161};

/// Before there were two surcharge factors, one served both sides of weight break 6.
void UpgradeEarlierLayout(RateContext& context) {
    if (context.DefLayoutMark != 0) return;
    context.DefLayoutMark = 1;
    context.DefFactorHigh = context.DefFactorLow;
    context.DefBreakIndex[0] = '6';
}

}  // namespace

int32_t HWT_CALL ReadDefFile(RateContext* context) {
    if (ReadRecordFrom(*context, kDef, FindUserFile(*context, kDef.extension)) == 0) return 0;
    UpgradeEarlierLayout(*context);
    return 1;
}

int32_t HWT_CALL WriteDefFile(RateContext* context) {
    if (WriteFile(*context, SetPathInCurrentDir(*context, kDef.extension),
                  WholeField(context->DefRecord), kDefCodes) == 0) {
        return 0;
    }
    return context->MexicoFilesLoaded != 0 ? WriteMexicoDefFile(context) : 1;
}

int32_t HWT_CALL WriteMexicoDefFile(RateContext* context) {
    return WriteFile(*context, SetPathInUserDir(*context, ".MEF"), WholeField(context->MefRecord),
                     kMefCodes);
}
