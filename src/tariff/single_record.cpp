#include "tariff/single_record.h"

#include <utility>

#include "frame/numbers.h"
#include "frame/text.h"

namespace hundredweight {
namespace {

constexpr std::size_t kVersionAt = 4;  // In the SET record.
constexpr std::size_t kVersionLength = 5;

#define HWT_RECORD(extension, field, ...) \
    { extension, HWT_FIELD(field), sizeof(RateContext::field), __VA_ARGS__ }

constexpr SingleRecord kSet = HWT_RECORD(".SET", SetRecord, 370, 374);
constexpr SingleRecord kMef = HWT_RECORD(".MEF", MefRecord, 0, 0);
constexpr SingleRecord kMet = HWT_RECORD(".MET", MetRecord, 0, 0);
constexpr SingleRecord kSc = HWT_RECORD(".SC ", ScTable, 360, 364);
constexpr SingleRecord kFac = HWT_RECORD(".FAC", FacRecord, 260, 264, HWT_FIELD(FacHandle));
constexpr SingleRecord kFcc = HWT_RECORD(".FCC", FccRecord, 260, 264, HWT_FIELD(FccHandle));

// The three blocks of a BSC file lie back to back, there as here.
constexpr SingleRecord kBsc = {".BSC",
                               HWT_FIELD(BscBlock1),
                               sizeof(RateContext::BscBlock1) + sizeof(RateContext::BscBlock2) +
                                   sizeof(RateContext::BscBlock3),
                               480,
                               484,
                               HWT_FIELD(BscHandle)};
static_assert(HWT_FIELD(BscBlock1) + kBsc.size == HWT_FIELD(BseBody));

}  // namespace

int32_t ReadRecordFrom(RateContext& context, const SingleRecord& facts, OpenFile file) {
    if (!file) return FailWith(context, facts.open_code);
    if (file.ReadHead(FieldAt(context, facts.field), facts.size) < facts.size) {
        return FailWith(context, facts.read_code);
    }
    if (facts.handle != kNoField) StoreHandle(context, facts.handle, std::move(file));
    return 1;
}

int32_t ReadRecord(RateContext& context, const SingleRecord& facts) {
    if (facts.handle != kNoField) ResetHandleField(context, facts.handle);
    return ReadRecordFrom(context, facts, OpenDataFile(context, facts.extension));
}

int32_t ReadSetFile(RateContext& context) {
    if (ReadRecord(context, kSet) == 0) return 0;
    InlineText<kVersionLength> digits;
    for (const char character : WholeField(context.SetRecord).substr(kVersionAt, kVersionLength)) {
        if (IsDigit(character)) digits.Append(1, character);
    }
    context.SetVersion = ReadInteger(digits);
    return 1;
}

int32_t ReadMexicoFiles(RateContext& context) {
    const int32_t defaults = ReadRecordFrom(context, kMef, FindUserFile(context, kMef.extension));
    const int32_t settings = ReadRecord(context, kMet);
    return defaults == 1 && settings == 1 ? 1 : 0;
}

int32_t ReadScFile(RateContext& context) {
    return ReadRecord(context, kSc);
}

int32_t ReadBscFile(RateContext& context) {
    return ReadRecord(context, kBsc);
}

int32_t ReadFacFile(RateContext& context) {
    if (context.NoBaseTablesFlag != 'Y' && ReadRecord(context, kFac) == 0) return 0;
    if (context.SkipZipTablesFlag == 'Y') return 1;
    return ReadRecord(context, kFcc);
}

}  // namespace hundredweight
