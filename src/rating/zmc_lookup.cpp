#include "rating/zmc_lookup.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "frame/inline_text.h"
#include "frame/text.h"
#include "tariff/data_file.h"
#include "tariff/zmc_file.h"

namespace hundredweight {
namespace {

constexpr std::size_t kZipLength = 5;
constexpr std::size_t kKeyLength = 6;
constexpr int32_t kRecordsPerRead = 200;

/// Rate codes that begin with a letter are filed as they stand, the others with their sixth
/// character first.
InlineText<kKeyLength> RateCodeKey(const RateContext& context) {
    const std::string_view code = WholeField(context.RateCode).substr(0, kKeyLength);
    if (IsLetter(code.front())) return code;
    return InlineText<kKeyLength>(code.substr(kKeyLength - 1)).Append(code);
}

/// Byte by byte, whatever the bytes' values are.
template <std::size_t Size>
bool InRange(std::string_view key, const char (&low)[Size], const char (&high)[Size]) {
    return std::memcmp(key.data(), low, Size) >= 0 && std::memcmp(key.data(), high, Size) <= 0;
}

struct ShipmentKey {
    std::string_view origin;
    std::string_view destination;
    InlineText<kKeyLength> rate_code;
};

bool Matches(const ZmcFileRecord& record, const ShipmentKey& key) {
    std::string_view first = key.origin;
    std::string_view second = key.destination;
    const bool either_way = record.Direction != 'F';
    if (either_way && std::memcmp(first.data(), second.data(), kZipLength) > 0) {
        std::swap(first, second);
    }
    return InRange(first, record.FirstLow, record.FirstHigh) &&
           InRange(second, record.SecondLow, record.SecondHigh) &&
           InRange(key.rate_code, record.RateCodeLow, record.RateCodeHigh);
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
    const OpenFile file = OpenDataFile(context, ".ZMC");
    if (!file) return;
    const ShipmentKey key = {WholeField(context.OrigZip).substr(0, kZipLength),
                             WholeField(context.DestZip).substr(0, kZipLength),
                             RateCodeKey(context)};
    ZmcFileRecord records[kRecordsPerRead];
    for (int32_t left = context.ZmcCount; left > 0;) {
        const auto wanted = static_cast<std::size_t>(std::min(left, kRecordsPerRead));
        const std::size_t arrived =
            platform::ReadBytes(file.handle(), records, wanted * sizeof(ZmcFileRecord)) /
            sizeof(ZmcFileRecord);
        for (std::size_t i = 0; i < arrived; ++i) {
            std::memcpy(context.ZmcRecord, &records[i], sizeof context.ZmcRecord);
            if (Matches(records[i], key)) return TakeAmounts(context, records[i]);
        }
        if (arrived < wanted) return;
        left -= static_cast<int32_t>(arrived);
    }
}

}  // namespace hundredweight
