#include <hundredweight/rate_context.h>

#include <algorithm>
#include <memory>
#include <span>

#include "reference/samples/bytes.h"
#include "reference/samples/file_contents.h"
#include "reference/samples/network.h"

namespace hundredweight::samples {
namespace {

void Put(std::span<char> field, std::string_view text) {
    std::ranges::copy(Padded(text, field.size()), field.begin());
}

char YesNo(bool condition) {
    return condition ? 'Y' : 'N';
}

/// A discount group: one percentage for every weight column, a flat percentage and a floor.
struct DiscountGroup {
    const char* percent;
    const char* flat;
    const char* floor;
};

constexpr DiscountGroup kDiscountGroups[] = {
    {"45.50", "0.00", "85.00"},
    {"42.00", "0.00", "92.50"},
    {"30.00", "0.00", "110.00"},
    {"25.00", "12.50", "125.00"},
};

}  // namespace

std::string SettingsRecord(const SetOptions& options) {
    const auto context = std::make_unique<RateContext>();
    // The first nine bytes end in the version of the set's layout.
    Put(context->SetRecord, "SET V0022");
    Put(context->ZipLength, "5");
    context->LabFilesFlag = YesNo(!options.engine);
    context->Zp7FileFlag = YesNo(options.mexico);
    context->AccFileFlag = 'Y';
    context->NoBaseTablesFlag = YesNo(options.engine);
    context->McaFileFlag = YesNo(!options.engine);
    context->SkipZipTablesFlag = YesNo(options.engine);
    context->NoBseFlag = YesNo(options.engine);
    context->TariffSourceCode = options.engine ? '1' : 'N';
    context->SurchargeOnGross = 'N';
    context->SetByte260 = '1';
    context->NoFlatDiscountFlag = 'N';
    return {context->SetRecord, sizeof context->SetRecord};
}

std::string DefaultsRecord(const SetOptions&) {
    const auto context = std::make_unique<RateContext>();
    context->DiscountOn = 1;
    context->DefByte31 = ' ';
    context->DefModeCFlag = 'N';
    context->RateFactor = 1.0F;
    context->DefLayoutMark = 1;
    Put(context->DefBreakIndex, "6");
    context->ProfileFileCurrent = 'Y';
    return {context->DefRecord, sizeof context->DefRecord};
}

std::string DiscountRecord(const SetOptions&) {
    const auto context = std::make_unique<RateContext>();
    Put(context->DiscRecord, "");
    context->DisMethod = 1;
    context->DisGroupSelector = '4';
    for (std::size_t i = 0; i < std::size(kWeightBreaks); ++i) {
        Put(context->DisWeightColumns[i], Padded("C", 11) + std::to_string(kWeightBreaks[i]));
    }
    for (std::size_t g = 0; g < std::size(kDiscountGroups); ++g) {
        const DiscountGroup& group = kDiscountGroups[g];
        std::string text;
        for (std::size_t i = 0; i < std::size(kWeightBreaks); ++i) {
            text += RightAligned(group.percent, 6);
        }
        Put(context->DisColumns[g],
            text + RightAligned(group.flat, 6) + RightAligned(group.floor, 7));
    }
    return {context->DiscRecord, sizeof context->DiscRecord};
}

std::string BaseRateRecord(const SetOptions&) {
    constexpr std::size_t kHeaderLength = 1144;
    constexpr std::int32_t kBodyOffset = 1200;
    constexpr std::int32_t kBodyLength = 128;
    const std::string position = Bytes(kBodyOffset) + Bytes(kBodyLength);
    const std::string header = Padded(Padded("SAMPLE BASE RATES", 32) + position, kHeaderLength);
    return Padded(header, kBodyOffset) + Padded("SAMPLE BASE RATE BODY", kBodyLength);
}

}  // namespace hundredweight::samples
