#include "session/notes.h"

#include <fmt/core.h>
#include <hundredweight/engine_interface.h>

#include <cmath>
#include <string_view>

#include "session/shipment_entry.h"
#include "text/code_page.h"

namespace cwt {
namespace {

using Notes = std::vector<std::string>;

/// An engine is sent, and knows, no more of a city than that.
void NoteCutCity(const char* point, const std::string& city, Notes& notes) {
    constexpr std::size_t kSent = sizeof EngineRateRecord{}.OrigCity;
    const std::optional<std::string> bytes = ToCodePage(city);
    if (!bytes || bytes->size() <= kSent) return;
    notes.push_back(fmt::format("{}.city: the engine is sent \"{}\"", point,
                                FromCodePage(std::string_view(*bytes).substr(0, kSent))));
}

/// The rate record rounds the product of a factor and the conversion rate.
void NoteRoundedFactor(const RateContext& context, Notes& notes) {
    constexpr double kFloatError = 0.01;  // Steps that single precision may be off.
    const double steps = FactorSteps(context);
    if (std::abs(steps - std::round(steps)) < kFloatError) return;
    notes.push_back(fmt::format("the factor {:.6f}, with the conversion rate, is rounded to {:.4f}",
                                steps / 10000, std::round(steps) / 10000));
}

/// The charges by weight break are in whole dollars.
void NoteCutFloor(const Shipment& shipment, Notes& notes) {
    const double floor = shipment.discount ? shipment.discount->floor : 0;
    if (floor == std::floor(floor)) return;
    notes.push_back(fmt::format("discount.floor: the charges by weight break are raised to {}",
                                std::floor(floor)));
}

void NoteUnreachedBreak(const Shipment& shipment, const RateContext& context, Notes& notes) {
    if (!shipment.surcharge || shipment.surcharge->break_index < context.WeightBreakCount) return;
    notes.push_back(fmt::format(
        "surcharge: the tariff set has {} weight breaks, so low_percent is taken at every weight",
        +context.WeightBreakCount));
}

/// Groups of the discount file may go by service codes, which the guide alone knows beforehand.
void NoteUnknownServiceCodes(const Shipment& shipment, const RateContext& context, Notes& notes) {
    constexpr char kFromGroup = 'C';
    constexpr std::string_view kByServiceCode = "245";
    if (shipment.service_guide || context.DiscountOn == 0 || context.DiscountSource != kFromGroup ||
        kByServiceCode.find(context.DisGroupSelector) == kByServiceCode.npos) {
        return;
    }
    notes.emplace_back(
        "the discount goes by service codes, and the service guide was not asked for them");
}

}  // namespace

Notes NotesOn(const Shipment& shipment, const RateContext& context) {
    Notes notes;
    NoteCutCity("origin", shipment.origin.city, notes);
    NoteCutCity("destination", shipment.destination.city, notes);
    NoteRoundedFactor(context, notes);
    NoteCutFloor(shipment, notes);
    NoteUnreachedBreak(shipment, context, notes);
    NoteUnknownServiceCodes(shipment, context, notes);
    return notes;
}

}  // namespace cwt
