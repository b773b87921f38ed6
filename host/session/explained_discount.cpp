#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "bill/money.h"
#include "session/discount_origin.h"
#include "session/explained.h"
#include "text/field_text.h"

namespace cwt {
namespace {

/// A percentage in hundredths, rounded as it is sent to the engine.
int64_t Hundredths(float percent) {
    return static_cast<int64_t>(std::nearbyint(double{percent * 100.0F}));
}

/// How many percentages the engine is sent: the defaults may end the list behind a break.
std::size_t CountSent(const RateContext& context) {
    if (context.DefBreakCount[0] == '\0') return kDiscountBreaks;
    const int cut = std::atoi(TextOf(context.DefBreakIndex).c_str()) +
                    std::atoi(TextOf(context.DefBreakCount).c_str());
    return cut >= 0 && cut < static_cast<int>(kDiscountBreaks) ? static_cast<std::size_t>(cut)
                                                               : kDiscountBreaks;
}

/// Which percentage of the list the bill's break takes: a break behind the list's end the last.
std::optional<std::size_t> PlaceInList(const RatedShipment& rated) {
    const auto weight_break = rated.engine.BreakOf(rated.bill.billed_weight);
    const std::size_t sent = CountSent(rated.context);
    if (!weight_break || sent == 0) return std::nullopt;
    return std::min(*weight_break, sent - 1);
}

/// Entered values and those of groups reach as many weight breaks as the discount file has columns.
bool IsCarried(const RateContext& context, std::size_t place) {
    return context.DiscountSource == kFromZipRecord ||
           static_cast<int32_t>(place) < context.DiscBreakCount;
}

std::string PercentWords(const RatedShipment& rated, std::size_t place) {
    const std::size_t billed = *rated.engine.BreakOf(rated.bill.billed_weight);
    const int lowest = rated.engine.breaks[billed].weight;
    const std::string words = fmt::format(" {} percent is that of weight break {}",
                                          rated.bill.discount_percent, place + 1);
    if (billed == place) return fmt::format("{}, {}#>.", words, lowest);
    return fmt::format("{}, the last of the list, for {}#> behind it.", words, lowest);
}

/// Says which percentage the bill bears, if it is one of the list.
void ExplainPercent(const RatedShipment& rated, std::optional<std::size_t> place,
                    const DiscountOrigin& origin, Statement& statement) {
    const RateContext& context = rated.context;
    const std::string& percent = rated.bill.discount_percent;
    const int64_t flat = Hundredths(context.DiscountFlatPercent);
    if (flat != 0 && flat == CentsOf(percent)) {
        statement.words +=
            fmt::format(" {} percent is its flat one, which goes before the others.", percent);
        if (origin.has_values) statement.sources.push_back(origin.flat);
        return;
    }
    const auto is_billed = [&](std::size_t i) {
        const float listed = context.DiscountBreakPercent[i];
        return flat == 0 && Hundredths(listed) == CentsOf(percent);
    };
    if (place && is_billed(*place) && !IsCarried(context, *place)) {
        statement.words += fmt::format(
            " It is {} percent at weight break {}, since the discount file has {} weight columns.",
            percent, *place + 1, +context.DiscBreakCount);
        statement.sources.push_back(rated.files.Record("DIS", 1, "DisWeightColumns"));
    } else if (place && is_billed(*place)) {
        statement.words += PercentWords(rated, *place);
        if (origin.has_values) statement.sources.push_back(origin.percent);
    } else {
        statement.words += fmt::format(
            " {} percent is the engine's own answer; which one of the list it is, if any, is not "
            "known.",
            percent);
    }
    statement.sources.push_back({.field = "DiscountPctText"});
}

}  // namespace

void ExplainDiscount(const RatedShipment& rated, Explanation& explanation) {
    const Bill& bill = rated.bill;
    const std::optional<std::size_t> place = PlaceInList(rated);
    const DiscountOrigin origin = FindDiscountOrigin(rated, place.value_or(0));
    Statement statement = {
        .topic = "discount",
        .words = origin.words,
        .figures = {{"percent", bill.discount_percent}, {"amount", bill.discount_amount}},
        .sources = origin.sources};
    const int64_t percent = CentsOf(bill.discount_percent);
    const Cents gross = SumOfLines(bill);
    if (origin.has_values || percent != 0) ExplainPercent(rated, place, origin, statement);
    statement.adds_up = PercentOf(gross, percent) == CentsOf(bill.discount_amount);
    if (!*statement.adds_up) {
        statement.words +=
            fmt::format(" The engine's own amount stands: {}.", bill.discount_amount);
    } else if (percent != 0) {
        statement.words += fmt::format(" {} x {} / 100 = {}.", AmountOf(gross),
                                       bill.discount_percent, bill.discount_amount);
    }
    if (rated.context.NoFlatDiscountFlag == 'Y' && origin.has_values) {
        statement.words += " The tariff set allows no flat percentages.";
        statement.sources.push_back(rated.Settings("NoFlatDiscountFlag"));
    }
    statement.sources.push_back({.field = "DiscountAmountText"});
    explanation.push_back(statement);
}

}  // namespace cwt
