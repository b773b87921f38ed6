#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "bill/money.h"
#include "session/explained.h"

namespace cwt {
namespace {

/// Whether all lines have the same rate at every weight break.
bool HasOneRate(const RatedShipment& rated) {
    const Bill& bill = rated.bill;
    return rated.engine.RatesAllKinds() ||
           std::ranges::all_of(bill.lines, [&](const BillLine& line) {
               return line.rated_as == bill.lines.front().rated_as;
           });
}

/// The single-shipment charge of a break in whole dollars, as the engine told it; nothing when it
/// was raised to a floor, or may have been.
std::optional<int> SingleCharge(const RatedShipment& rated, int weight) {
    const float unmarked_floor = std::trunc(+rated.context.ZmcMinimum);
    for (const BreakCharge& charge : rated.bill.single_shipment_charges) {
        if (charge.weight != weight) continue;
        if (charge.raised_to_floor || static_cast<float>(charge.amount) == unmarked_floor)
            return std::nullopt;
        return charge.amount;
    }
    return std::nullopt;
}

/// The same, of a shipment of one rate that the list agrees with at the billed break; of any other
/// the list does not tell what another break would have cost.
std::optional<int> KnownCharge(const RatedShipment& rated, int weight) {
    const Bill& bill = rated.bill;
    const auto billed = rated.engine.BreakOf(bill.billed_weight);
    if (!billed || !HasOneRate(rated)) return std::nullopt;
    const int lowest = rated.engine.breaks[*billed].weight;
    const Cents charge = ChargeOf(lowest, CentsOf(bill.lines.front().rate));
    constexpr int kCentsInDollar = 100;
    if (SingleCharge(rated, lowest) != Portion(charge, 1, kCentsInDollar)) return std::nullopt;
    return SingleCharge(rated, weight);
}

constexpr const char* kNotKnown = "is not known from what the engine answered";

/// What the shipment's own weight would have cost, as closely as a charge in whole dollars tells.
std::string OwnBreakWords(const RatedShipment& rated) {
    const Bill& bill = rated.bill;
    const auto own = rated.engine.BreakOf(bill.total_weight);
    const int lowest = own ? rated.engine.breaks[*own].weight : 0;
    const std::optional<int> dollars = own ? KnownCharge(rated, lowest) : std::nullopt;
    if (dollars) {
        // A whole dollar may be half a dollar off, and every line is rounded.
        const auto lines = static_cast<Cents>(bill.lines.size());
        const Cents least = (*dollars * Cents{100} - 50) * bill.total_weight / lowest - lines;
        const Cents most = (*dollars * Cents{100} + 50) * bill.total_weight / lowest + lines;
        if (least > CentsOf(bill.gross)) {
            return fmt::format(
                " As it weighs it would have come to between {} and {}, going by the SS charge of "
                "{} for {} pounds, which is in whole dollars.",
                AmountOf(least), AmountOf(most), *dollars, lowest);
        }
    }
    return fmt::format(" What its own {} pounds would have cost {}.", bill.total_weight, kNotKnown);
}

void ExplainTaken(const RatedShipment& rated, Statement& statement) {
    const Bill& bill = rated.bill;
    const BillLine& deficit = bill.deficit;
    statement.figures = {
        {"weight", deficit.weight}, {"rate", deficit.rate}, {"charge", deficit.charge}};
    statement.adds_up = ChargeOf(deficit.weight, CentsOf(deficit.rate)) == CentsOf(deficit.charge);
    statement.words =
        fmt::format("The engine bills {} pounds as {}", bill.total_weight, bill.billed_weight);
    if (const auto billed = rated.engine.BreakOf(bill.billed_weight);
        billed && rated.engine.breaks[*billed].weight == bill.billed_weight) {
        statement.words += ", the lowest weight of a break";
    }
    const auto rate = [](const BillLine& line) { return CentsOf(line.rate); };
    const bool lowest_rate = rate(*std::ranges::min_element(bill.lines, {}, rate)) == rate(deficit);
    const char* const of_lines = lowest_rate ? ", the lowest rate of the lines" : "";
    if (*statement.adds_up) {
        statement.words += fmt::format(": {} more x {} / 100 = {}{}.", deficit.weight, deficit.rate,
                                       deficit.charge, of_lines);
    } else {
        statement.words += fmt::format(": {} more at {}{}. Its own charge stands: {}.",
                                       deficit.weight, deficit.rate, of_lines, deficit.charge);
    }
    statement.words += OwnBreakWords(rated);
    for (const char* field : {"ExtraWeightText", "ExtraRateText", "ExtraChargeText"}) {
        statement.sources.push_back({.field = field});
    }
}

void ExplainNotTaken(const RatedShipment& rated, Statement& statement) {
    const Bill& bill = rated.bill;
    statement.figures = {{"weight", 0}};
    statement.words = "No weight was added. ";
    const auto own = rated.engine.BreakOf(bill.billed_weight);
    if (!own) {
        statement.words += "What another weight break would have cost is not known.";
    } else if (*own + 1 == rated.engine.breaks.size()) {
        statement.words += "There is no heavier weight break.";
    } else {
        const int next = rated.engine.breaks[*own + 1].weight;
        statement.words += fmt::format("The next break begins at {} pounds, {} more; ", next,
                                       next - bill.total_weight);
        if (const std::optional<int> dollars = KnownCharge(rated, next)) {
            statement.words += fmt::format(
                "billed as that the shipment would come to {} in whole dollars, against {}.",
                *dollars, bill.gross);
            statement.figures.push_back({"next_break_charge", *dollars});
        } else {
            statement.words += fmt::format("what that would have cost {}.", kNotKnown);
        }
    }
    statement.sources.push_back({.field = "ExtraWeightText"});
}

}  // namespace

void ExplainDeficit(const RatedShipment& rated, Explanation& explanation) {
    Statement statement = {.topic = "deficit"};
    if (rated.bill.deficit.weight != 0) {
        ExplainTaken(rated, statement);
    } else {
        ExplainNotTaken(rated, statement);
    }
    explanation.push_back(statement);
}

}  // namespace cwt
