#include <fmt/core.h>

#include <cmath>
#include <cstdlib>

#include "bill/money.h"
#include "session/explained.h"
#include "text/field_text.h"

namespace cwt {
namespace {

constexpr int64_t kStepsInPercent = 10'000;  // Percentages have four decimals at most.

/// A percentage in its steps, as it was entered or filed before it became single precision.
int64_t StepsOf(float percent) {
    return std::llround(double{percent} * kStepsInPercent);
}

/// With two decimals, or four where it has them.
std::string PercentText(int64_t steps) {
    const std::string text =
        fmt::format("{}{}.{:04}", steps < 0 ? "-" : "", std::abs(steps) / kStepsInPercent,
                    std::abs(steps) % kStepsInPercent);
    return text.ends_with("00") ? text.substr(0, text.size() - 2) : text;
}

/// Where the surcharge's switch and percentages come from: the shipment, its profile, or the
/// defaults.
struct SurchargeOrigin {
    std::string words;
    Source on, low, high;
};

SurchargeOrigin OriginOf(const RatedShipment& rated) {
    const RateContext& context = rated.context;
    if (rated.shipment.surcharge) {
        return {"entered with the shipment",
                {.shipment = "surcharge"},
                {.shipment = "surcharge.low_percent"},
                {.shipment = "surcharge.high_percent"}};
    }
    if (rated.shipment.profile && context.Profile.SavedSurchargeOn != 0) {
        return {"of the profile", rated.Profile("SavedSurchargeOn"),
                rated.Profile("SavedFactorLow"), rated.Profile("SavedFactorHigh")};
    }
    if (rated.shipment.profile && context.Profile.AltSurchargeOn != 0) {
        return {"of the profile", rated.Profile("AltSurchargeOn"), rated.Profile("AltFactorLow"),
                rated.Profile("AltFactorHigh")};
    }
    return {"of the defaults", rated.Defaults("SurchargeOn"), rated.Defaults("DefFactorLow"),
            rated.Defaults("DefFactorHigh")};
}

/// Says on which side of the surcharge break the billed weight lies.
void ExplainSide(const RatedShipment& rated, int weight_break, bool low, Statement& statement) {
    const RateContext& context = rated.context;
    statement.sources.push_back(rated.shipment.surcharge
                                    ? Source{.shipment = "surcharge.break_index"}
                                    : rated.Defaults("DefBreakIndex"));
    const bool reached = weight_break >= 0 && weight_break < context.WeightBreakCount;
    if (!reached) {
        statement.words += fmt::format("taken at every weight, since there is no weight break {}",
                                       weight_break + 1);
        return;
    }
    const bool own = context.WgtLoaded != 0;
    statement.words += fmt::format(
        "for a billed weight of {}, {} {} pounds, where weight break {} of the {} begins",
        rated.bill.billed_weight, low ? "below" : "at or above",
        +context.WeightBreakMin[weight_break], weight_break + 1, own ? "tariff set" : "engine");
    statement.sources.push_back(
        own ? rated.files.Record("WGT", weight_break + 1)
            : Source{.field = fmt::format("WeightBreakMin[{}]", weight_break)});
}

/// The base and what comes of it.
void ExplainAmount(const RatedShipment& rated, int64_t steps, Statement& statement) {
    const Bill& bill = rated.bill;
    const bool on_gross = rated.context.SurchargeOnGross == 'Y';
    const Cents base = CentsOf(bill.gross) - (on_gross ? Cents{0} : CentsOf(bill.discount_amount));
    statement.figures.push_back({"percent", PercentText(steps)});
    statement.figures.push_back({"base", AmountOf(base)});
    statement.sources.push_back(rated.Settings("SurchargeOnGross"));
    const Cents decimal = Portion(base, steps, 100 * kStepsInPercent);
    statement.adds_up = decimal == CentsOf(bill.surcharge);
    const char* const what = on_gross ? "the gross charge" : "the gross charge less discount";
    if (*statement.adds_up) {
        statement.words +=
            fmt::format(": {} percent of {}, {} x {} / 100 = {}.", PercentText(steps), what,
                        AmountOf(base), PercentText(steps), bill.surcharge);
    } else {
        statement.words += fmt::format(
            ": {} percent of {}, {}. The library's own amount stands: {}. It reckons with binary "
            "fractions; decimals would give {}.",
            PercentText(steps), what, AmountOf(base), bill.surcharge, AmountOf(decimal));
    }
}

void ExplainDue(const Bill& bill, Explanation& explanation) {
    Statement statement = {
        .topic = "due",
        .words = fmt::format("{} + {} = {}.", bill.net, bill.surcharge, bill.total_due),
        .figures = {{"total_due", bill.total_due}},
        .sources = {{.field = "NetChargeText"}, {.field = "SurchargeText"}}};
    statement.adds_up = CentsOf(bill.net) + CentsOf(bill.surcharge) == CentsOf(bill.total_due);
    explanation.push_back(statement);
}

}  // namespace

void ExplainSurcharge(const RatedShipment& rated, Explanation& explanation) {
    const RateContext& context = rated.context;
    const SurchargeOrigin origin = OriginOf(rated);
    Statement statement = {.topic = "surcharge",
                           .figures = {{"surcharge", rated.bill.surcharge}},
                           .sources = {origin.on}};
    if (context.SurchargeOn == 0) {
        statement.words = "No surcharge: neither shipment, profile nor defaults ask for one.";
    } else {
        const int weight_break = std::atoi(TextOf(context.DefBreakIndex).c_str());
        const bool low = context.SurchargeBreakSide < weight_break;
        statement.words = fmt::format("The {} percentage {}, ", low ? "low" : "high", origin.words);
        statement.sources.push_back(low ? origin.low : origin.high);
        ExplainSide(rated, weight_break, low, statement);
        const float percent = low ? +context.DefFactorLow : +context.DefFactorHigh;
        ExplainAmount(rated, StepsOf(percent), statement);
    }
    statement.sources.push_back({.field = "SurchargeText"});
    explanation.push_back(statement);
    ExplainDue(rated.bill, explanation);
}

}  // namespace cwt
