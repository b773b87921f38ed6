// Whether a shipment's two points may be rated together.
#include <hundredweight/exports.h>

#include <cstring>
#include <string_view>

#include "frame/failure.h"
#include "frame/text.h"

using namespace hundredweight;

namespace {

constexpr int32_t kTwoLetterCodes = 266;
constexpr std::size_t kMexicoMarkerAt = 5;
constexpr std::string_view kOriginTerritories = "FBXY";
constexpr std::string_view kDestinationTerritories = "TBXY";

bool IsOneOf(char territory, std::string_view accepted) {
    return accepted.find(territory) != std::string_view::npos;
}

bool IsServed(const RateContext& context) {
    const bool same_state = std::memcmp(context.OrigState, context.DestState, 2) == 0;
    if (context.OrigIntrastate == 'N' && same_state) return false;
    if (context.OrigTerritory == 'X' && context.DestTerritory == 'X') return false;
    return IsOneOf(context.OrigTerritory, kOriginTerritories) &&
           IsOneOf(context.DestTerritory, kDestinationTerritories);
}

}  // namespace

int32_t HWT_CALL VerTerritory(RateContext* context) {
    const char* const origin = context->OrigZip;
    const char* const destination = context->DestZip;
    if (IsLetter(origin[0]) && IsLetter(destination[0])) return Fail(*context, kTwoLetterCodes);
    if (!IsDigit(origin[0]) || !IsDigit(destination[0])) {
        context->CrossBorder = 1;
        return 1;
    }
    context->CrossBorder = 0;
    if (origin[kMexicoMarkerAt] == 'M' || destination[kMexicoMarkerAt] == 'M') {
        context->MexicoShipment = context->UseEngine == 0 ? 1 : 0;
        return 1;
    }
    context->MexicoShipment = 0;
    return IsServed(*context) ? 1 : Fail(*context, kOutOfScope);
}
