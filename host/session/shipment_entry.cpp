#include "session/shipment_entry.h"

#include <fmt/format.h>

#include <cmath>

#include "session/messages.h"
#include "shipment/spelling.h"
#include "text/code_page.h"
#include "text/decimals.h"
#include "text/field_text.h"

namespace cwt {
namespace {

constexpr int32_t kOriginZip = 101;
constexpr int32_t kDestinationZip = 102;
constexpr int32_t kInvalidClass = 105;
constexpr int32_t kDiscountTooHigh = 118;
constexpr int32_t kFloorTooHigh = 119;
constexpr int32_t kInvalidFactor = 513;

/// More is the end of the list to an engine.
constexpr const char* kPercentOfBreak = "0 to 99.98 at a weight break";

/// Writes texts of people into fields of the record, and takes down those that do not fit.
class Entry {
 public:
    /// The code is the library's for what the field holds, 0 when it has none.
    template <std::size_t Size>
    void Put(char (&field)[Size], const std::string& place, const std::string& text,
             int32_t code = 0) {
        const std::optional<std::string> bytes = ToCodePage(text);
        if (bytes && SetBytes(field, *bytes)) return;
        const std::string reason = bytes ? fmt::format("at most {} characters", Size - 1)
                                         : std::string("characters that the data can hold");
        refusals_.push_back(
            {place, code == 0 ? "the text does not fit" : MessageOf(code), code, text, {reason}});
    }

    template <std::size_t Size>
    void PutPostalCode(char (&field)[Size], const std::string& place, const std::string& text,
                       int32_t code) {
        const std::size_t before = refusals_.size();
        Put(field, place, text, code);
        if (refusals_.size() > before) refusals_.back().alternatives = PostalCodeForms();
    }

    void Refuse(Refusal refusal) { refusals_.push_back(std::move(refusal)); }

    Refusals Take() { return std::move(refusals_); }

 private:
    Refusals refusals_;
};

void EnterLines(const Shipment& shipment, RateContext& context, Entry& entry) {
    for (std::size_t i = 0; i < shipment.lines.size(); ++i) {
        const std::string line = fmt::format("lines[{}]", i);
        entry.Put(context.LineClass[i], line + ".class", shipment.lines[i].class_code,
                  kInvalidClass);
        entry.Put(context.LineWeight[i], line + ".weight",
                  std::to_string(shipment.lines[i].weight));
    }
}

/// Switches the entered values on, over what file, profile and defaults say.
void EnterDiscount(const Discount& discount, RateContext& context, Entry& entry) {
    const auto put = [&](auto& field, const std::string& place, double value, double highest,
                         int32_t code, const char* possible) {
        if (value >= 0 && value <= highest) {
            return entry.Put(field, place, fmt::format("{:.2f}", value));
        }
        Refusal refusal = RefusalOf(place, code);
        refusal.alternatives = {possible};
        entry.Refuse(std::move(refusal));
    };
    context.DiscountOn = 1;
    context.Profile.DiscModeP = 1;
    context.DefModeZ = 0;
    put(context.EntryDiscountPercent, "discount.percent", discount.percent, 99.99, kDiscountTooHigh,
        kPercentOfBreak);
    put(context.EntryFlatPercent, "discount.flat_percent", discount.flat_percent, 99.99,
        kDiscountTooHigh, "0 to 99.99");
    put(context.EntryFloor, "discount.floor", discount.floor, 999.99, kFloorTooHigh, "0 to 999.99");
}

void EnterSurcharge(const Surcharge& surcharge, RateContext& context, Entry& entry) {
    context.SurchargeOn = 1;
    context.DefFactorLow = static_cast<float>(surcharge.low_percent);
    context.DefFactorHigh = static_cast<float>(surcharge.high_percent);
    entry.Put(context.DefBreakIndex, "surcharge.break_index",
              std::to_string(surcharge.break_index));
}

/// The letter of a territory; 'N', which serves nobody, for none.
char EnterTerritory(const std::string& place, const std::string& territory, Entry& entry) {
    const std::string letter = UpperCase(territory);
    constexpr std::string_view kLetters = "BFTXYN";
    if (letter.size() == 1 && kLetters.find(letter) != kLetters.npos) return letter[0];
    entry.Refuse({place, "no territory", 0, territory, {"B", "F", "T", "X", "Y", "N"}});
    return 'N';
}

}  // namespace

double FactorSteps(const RateContext& context) {
    constexpr double kStepsInOne = 10000;
    float factor = context.RateFactor != 0.0F ? context.RateFactor : 1.0F;
    if (context.ConversionOn != 0) factor *= context.ConversionRate;
    return double{factor} * kStepsInOne;
}

Refusals EnterShipment(const Shipment& shipment, RateContext& context) {
    Entry entry;
    const Point& origin = shipment.origin;
    const Point& destination = shipment.destination;
    entry.PutPostalCode(context.OrigZip, "origin.zip", origin.zip, kOriginZip);
    entry.Put(context.OrigCity, "origin.city", origin.city);
    entry.Put(context.OrigState, "origin.state", origin.state);
    context.OrigTerritory = EnterTerritory("origin.territory", origin.territory, entry);
    context.OrigIntrastate = origin.intrastate ? 'Y' : 'N';
    entry.PutPostalCode(context.DestZip, "destination.zip", destination.zip, kDestinationZip);
    entry.Put(context.DestCity, "destination.city", destination.city);
    entry.Put(context.DestState, "destination.state", destination.state);
    context.DestTerritory = EnterTerritory("destination.territory", destination.territory, entry);
    EnterLines(shipment, context, entry);
    if (shipment.tariff) entry.Put(context.TariffName, "tariff", *shipment.tariff);
    if (shipment.factor) context.RateFactor = static_cast<float>(*shipment.factor);
    if (shipment.discount) EnterDiscount(*shipment.discount, context, entry);
    if (shipment.surcharge) EnterSurcharge(*shipment.surcharge, context, entry);
    return entry.Take();
}

Refusals CheckFactor(const Shipment& shipment, const RateContext& context) {
    constexpr double kMostSteps = 99999;
    const bool entered = shipment.factor.has_value();
    const bool exact = !entered || (*shipment.factor > 0 && HasDecimals(*shipment.factor, 4));
    const double steps = std::round(FactorSteps(context));
    if (exact && steps >= 1 && steps <= kMostSteps) return {};
    Refusal refusal = RefusalOf(entered ? "factor" : "defaults", kInvalidFactor);
    refusal.written = fmt::to_string(entered ? *shipment.factor : double{context.RateFactor});
    refusal.alternatives = {"0.0001 to 9.9999 in steps of 0.0001"};
    if (context.ConversionOn != 0) {
        refusal.alternatives.back() +=
            fmt::format(", times the defaults' conversion rate {}", +context.ConversionRate);
    }
    return {refusal};
}

Refusals CheckDiscounts(const Shipment& shipment, const RateContext& context) {
    if (shipment.discount && shipment.discount->percent > 0 && context.DiscBreakCount <= 0) {
        return {{"discount.percent", "the discount file has no weight column to carry it"}};
    }
    constexpr double kEndOfList = 99.985;  // Percent that two decimals round to 99.99 or more.
    constexpr std::size_t kBreaks = 9;
    static_assert(sizeof context.DiscountBreakPercent == kBreaks * sizeof(float));
    for (std::size_t i = 0; i < kBreaks; ++i) {
        const float percent = context.DiscountBreakPercent[i];
        if (context.DiscountOn == 0 || double{percent} < kEndOfList) continue;
        Refusal refusal = RefusalOf("discount", kDiscountTooHigh);
        refusal.written = fmt::to_string(percent);
        refusal.alternatives = {kPercentOfBreak};
        return {refusal};
    }
    return {};
}

}  // namespace cwt
