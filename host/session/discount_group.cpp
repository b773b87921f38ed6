#include <fmt/core.h>

#include <algorithm>
#include <cstring>

#include "session/discount_origin.h"
#include "text/field_text.h"

namespace cwt {
namespace {

constexpr std::size_t kValuesInSet = 11;  // Nine percentages, a flat one and a floor.

/// How the selector chooses a group: both points of service 'D' in one state, in two; otherwise in
/// one state, in two.
struct GroupChoice {
    char selector;
    int groups[4];
};
constexpr GroupChoice kGroupChoices[] = {
    {'2', {0, 0, 1, 1}}, {'3', {0, 1, 0, 1}}, {'4', {0, 1, 2, 3}}, {'5', {2, 0, 3, 1}}};

struct DiscountGroup {
    char Percent[9][6];
    char FlatPercent[6];
    char Floor[7];
};

}  // namespace

DiscountOrigin DiscountOfGroup(const RatedShipment& rated, std::size_t weight_break) {
    const RateContext& context = rated.context;
    // Without a guide the services were not known yet when the group was chosen.
    const bool direct = context.UseServiceGuide != 0 && context.OrigServiceCode == 'D' &&
                        context.DestServiceCode == 'D';
    const bool one_state = rated.origin.state == rated.destination.state;
    std::size_t number = 0;
    for (const GroupChoice& choice : kGroupChoices) {
        const std::size_t place = (direct ? 0U : 2U) + (one_state ? 0U : 1U);
        if (choice.selector == context.DisGroupSelector) {
            number = static_cast<std::size_t>(choice.groups[place]);
        }
    }
    DiscountGroup group;
    std::memcpy(&group, context.DisColumns[number], sizeof group);
    bool agrees = context.DiscountFloor == ValueOf(group.Floor);
    for (int32_t i = 0; i < std::clamp(+context.DiscBreakCount, 0, 9); ++i) {
        const float percent = context.DiscountBreakPercent[i];
        agrees = agrees && percent == ValueOf(group.Percent[i]);
    }
    const Source selector = rated.files.Record("DIS", 1, "DisGroupSelector");
    if (!agrees) {
        return {"The discount is that of a discount group, which one is not known.", {selector}};
    }
    DiscountOrigin origin;
    origin.words = fmt::format(
        "The discount is that of group {} of the discount file's 4, which its selector '{}' takes "
        "for points in {} {} direct service (D) at both. The profile has put its own values there.",
        number + 1, TextOf(&context.DisGroupSelector, 1), one_state ? "one state" : "two states",
        direct ? "with" : "without known");
    origin.sources = {selector};
    // A profile has values for the first two groups and clears the others.
    if (number >= 2) {
        origin.words += " It has none for this one.";
        return origin;
    }
    const auto value = [&](std::size_t i) {
        return rated.Profile(fmt::format("DiscountValues[{}]", number * kValuesInSet + i));
    };
    origin.has_values = true;
    origin.percent = value(weight_break);
    origin.flat = value(kDiscountBreaks);
    origin.floor = value(kDiscountBreaks + 1);
    return origin;
}

}  // namespace cwt
