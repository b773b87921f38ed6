#include "session/discount_origin.h"

#include <fmt/core.h>

#include "text/field_text.h"

namespace cwt {
namespace {

constexpr char kFromGroup = 'C';
constexpr char kFromEntry = 'P';

DiscountOrigin FromEntry(const RatedShipment& rated) {
    if (!rated.shipment.discount) {
        return {"The profile asks for entered discount values, and the shipment has none.",
                {rated.Profile("DiscModeP")}};
    }
    const auto value = [](const char* name) {
        return Source{.shipment = std::string("discount.") + name};
    };
    return {.words = "The discount was entered with the shipment.",
            .sources = {},
            .has_values = true,
            .percent = value("percent"),
            .flat = value("flat_percent"),
            .floor = value("floor")};
}

DiscountOrigin FromNowhere(const RatedShipment& rated) {
    if (rated.context.DiscountOn == 0 && rated.shipment.profile) {
        return {
            "No discount: the profile switches none on.",
            {rated.Profile("DiscModeP"), rated.Profile("DiscModeC"), rated.Profile("DiscModeZ")}};
    }
    if (rated.context.DiscountOn == 0) {
        return {"No discount: the defaults switch none on.", {rated.Defaults("DiscountOn")}};
    }
    if (rated.shipment.profile) {
        return {
            fmt::format("No discount: none of the {} ZIP and state records of profile {} fits.",
                        CountZipRecords(rated.context), TextOf(rated.context.Profile.ProfileName)),
            {rated.Profile("ZipDiscountCount")}};
    }
    return {"No discount: the shipment has neither entered values nor a profile.",
            {rated.Defaults("DiscountOn")}};
}

}  // namespace

DiscountOrigin FindDiscountOrigin(const RatedShipment& rated, std::size_t weight_break) {
    const RateContext& context = rated.context;
    if (context.DiscountOn == 0) return FromNowhere(rated);
    switch (context.DiscountSource) {
        case kFromGroup:
            return DiscountOfGroup(rated, weight_break);
        case kFromEntry:
            return FromEntry(rated);
        case kFromZipRecord:
            return DiscountOfZipRecord(rated, weight_break);
        default:
            return FromNowhere(rated);
    }
}

}  // namespace cwt
