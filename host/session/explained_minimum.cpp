#include <fmt/core.h>

#include <algorithm>

#include "bill/money.h"
#include "session/explained.h"

namespace cwt {
namespace {

/// An amount that is filed in cents.
std::string FiledAmount(float cents) {
    return fmt::format("{:.2f}", double{cents} / 100);
}

void ExplainLaneMinimum(const RatedShipment& rated, Statement& statement) {
    if (rated.context.ZmcCount <= 0) {
        statement.words += " The tariff set has no minimum-charge file.";
        return;
    }
    const std::optional<MinimumChargeMatch>& match = rated.lane;
    if (!match) {
        statement.words += " The shipment falls under no record of the minimum-charge file.";
        return;
    }
    statement.words += fmt::format(
        " Of the minimum-charge file it falls under {}: {}, minimum {}, floor {}. These raise "
        "charges by weight break, not the net charge.",
        match->record == 0 ? "a record that is no longer there"
                           : fmt::format("record {}", match->record),
        match->words, FiledAmount(match->minimum), FiledAmount(match->floor));
    statement.figures.push_back({"lane_minimum", FiledAmount(match->minimum)});
    statement.figures.push_back({"lane_floor", FiledAmount(match->floor)});
    statement.sources.push_back(match->source);
}

void ExplainNet(const Bill& bill, Explanation& explanation) {
    Statement statement = {.topic = "net", .figures = {{"net_charge", bill.net}}};
    const Cents gross = SumOfLines(bill);
    const Cents less = gross - CentsOf(bill.discount_amount);
    const Cents minimum = CentsOf(bill.minimum);
    statement.adds_up = std::max(less, minimum) == CentsOf(bill.net);
    if (!*statement.adds_up) {
        statement.words = fmt::format("The engine's own net charge stands: {}.", bill.net);
    } else {
        statement.words =
            fmt::format("{} - {} = {}", AmountOf(gross), bill.discount_amount, AmountOf(less));
        if (less < minimum) {
            statement.words += fmt::format(". The minimum of {} holds: {} more.", bill.minimum,
                                           AmountOf(minimum - less));
            statement.figures.push_back({"raised_by", AmountOf(minimum - less)});
        } else {
            statement.words += fmt::format(", not below the minimum of {}.", bill.minimum);
        }
    }
    statement.sources = {{.field = "NetChargeText"}};
    explanation.push_back(statement);
}

}  // namespace

void ExplainMinimum(const RatedShipment& rated, Explanation& explanation) {
    Statement statement = {.topic = "minimum", .figures = {{"minimum_charge", rated.bill.minimum}}};
    statement.words = fmt::format(
        "The engine's first and second minimum amounts come to {} together; the record does not "
        "keep them apart.",
        rated.bill.minimum);
    statement.sources = {{.field = "MinChargeText"}};
    ExplainLaneMinimum(rated, statement);
    explanation.push_back(statement);
    ExplainNet(rated.bill, explanation);
}

}  // namespace cwt
