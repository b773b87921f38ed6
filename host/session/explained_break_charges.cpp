#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "session/discount_origin.h"
#include "session/explained.h"
#include "session/minimum_charge.h"

namespace cwt {
namespace {

/// Names the floor to which charges by weight break are raised with a mark. Result: whether there
/// is one.
bool NameFloor(const RatedShipment& rated, Statement& statement) {
    const RateContext& context = rated.context;
    if (context.DiscountFloor != 0.0F) {
        const std::string floor = fmt::format("{:.2f}", double{context.DiscountFloor});
        statement.words += fmt::format("the discount's floor of {}", floor);
        statement.figures.push_back({"floor", floor});
        const DiscountOrigin origin = FindDiscountOrigin(rated, 0);
        if (origin.has_values) {
            statement.sources.push_back(origin.floor);
        } else {
            statement.sources.push_back({.field = "DiscountFloorText"});
        }
        return true;
    }
    if (context.ZmcFloor == 0.0F) return false;
    const std::string floor = fmt::format("{:.2f}", double{context.ZmcFloor});
    statement.words += fmt::format("the minimum-charge file's floor of {}", floor);
    statement.figures.push_back({"floor", floor});
    if (const auto match = FindMinimumCharge(rated)) {
        statement.sources.push_back(match->source);
    }
    return true;
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
    const std::size_t before = statement.words.size();
    if (NameFloor(rated, statement)) {
        statement.words += raised == 0
                               ? ", cut to whole dollars, raises none"
                               : fmt::format(", cut to whole dollars, has raised {}", raised);
        statement.words[before] = 'T';
    } else {
        statement.words += "No floor raises them";
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
