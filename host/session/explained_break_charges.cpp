#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "session/discount_origin.h"
#include "session/explained.h"

namespace cwt {
namespace {

/// What raises charges by weight break with a mark; empty when nothing does.
std::string FloorWords(const RatedShipment& rated, Statement& statement) {
    const RateContext& context = rated.context;
    const bool of_discount = context.DiscountFloor != 0.0F;
    const float amount = of_discount ? +context.DiscountFloor : +context.ZmcFloor;
    if (amount == 0.0F) return {};
    const std::string floor = fmt::format("{:.2f}", double{amount});
    statement.figures.push_back({"floor", floor});
    if (of_discount) {
        const DiscountOrigin origin = FindDiscountOrigin(rated, 0);
        statement.sources.push_back(origin.has_values ? origin.floor
                                                      : Source{.field = "DiscountFloorText"});
        return fmt::format("The discount's floor of {}", floor);
    }
    if (rated.lane) statement.sources.push_back(rated.lane->source);
    return fmt::format("The minimum-charge file's floor of {}", floor);
}

void ExplainList(const RatedShipment& rated, const char* name, int list,
                 const std::vector<BreakCharge>& charges, Explanation& explanation) {
    if (charges.empty()) return;
    const auto raised =
        static_cast<int>(std::ranges::count(charges, true, &BreakCharge::raised_to_floor));
    const auto count = static_cast<int>(charges.size());
    Statement statement = {.topic = "break_charges",
                           .figures = {{"entries", count}, {"raised", raised}}};
    statement.words = fmt::format("{}: the engine's {} charges, in whole dollars. ", name, count);
    const std::string floor = FloorWords(rated, statement);
    if (floor.empty()) {
        statement.words += "No floor raises them";
    } else {
        statement.words += fmt::format("{}, cut to whole dollars, has raised {}", floor,
                                       raised == 0 ? "none" : std::to_string(raised));
    }
    if (const float minimum = rated.context.ZmcMinimum; minimum > 0) {
        statement.words += fmt::format(
            ". The minimum-charge file's minimum, {:.0f} as filed, has raised without a mark any "
            "other below it",
            std::trunc(minimum));
        statement.sources.push_back({.field = "ZmcMinimum"});
    }
    statement.words += ".";
    statement.sources.push_back({.field = fmt::format("BreakLists[{}]", list)});
    explanation.push_back(statement);
}

}  // namespace

void ExplainBreakCharges(const RatedShipment& rated, Explanation& explanation) {
    ExplainList(rated, "MC, with discount and minimum", 0, rated.bill.minimum_charges, explanation);
    ExplainList(rated, "SS, without", 1, rated.bill.single_shipment_charges, explanation);
}

}  // namespace cwt
