#include "rating/zmc_lookup.h"

#include <cstring>
#include <string_view>

#include "frame/inline_text.h"
#include "frame/text.h"
#include "tariff/zmc_file.h"

namespace hundredweight {
namespace {

constexpr std::size_t kZipLength = 5;
constexpr std::size_t kKeyLength = 6;

/// Rate codes that begin with a letter are filed as they stand, the others with their sixth
/// character first.
InlineText<kKeyLength> RateCodeKey(const RateContext& context) {
    const std::string_view code = WholeField(context.RateCode).substr(0, kKeyLength);
    if (IsLetter(code.front())) return code;
    return InlineText<kKeyLength>(code.substr(kKeyLength - 1)).Append(code);
}

void TakeAmounts(RateContext& context, const ZmcFileRecord& record) {
    const float floor_amount = record.FloorAmount;
    const float minimum_amount = record.MinimumAmount;
    if (floor_amount != 0.0F) context.ZmcFloor = floor_amount / 100.0F;
    if (minimum_amount > 0.0F) {
        context.ZmcMinimumDollars = minimum_amount / 100.0F;
        context.ZmcMinimum = minimum_amount;
    }
}

}  // namespace

void LookupZmc(RateContext& context) {
    const ZmcKey key(WholeField(context.OrigZip).substr(0, kZipLength),
                     WholeField(context.DestZip).substr(0, kZipLength), RateCodeKey(context));
    ZmcFileRecord record;
    const ZmcOutcome outcome = FindZmcRecord(context, key, record);
    if (outcome == ZmcOutcome::kNoRecords) return;
    std::memcpy(context.ZmcRecord, &record, sizeof context.ZmcRecord);
    if (outcome == ZmcOutcome::kMatch) TakeAmounts(context, record);
}

}  // namespace hundredweight
