#include "session/shipment_check.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include "session/engine_answers.h"
#include "session/messages.h"
#include "shipment/spelling.h"
#include "text/field_text.h"

namespace cwt {
namespace {

constexpr int32_t kAllKindsAllowed = 1;

void Append(Refusals& refusals, Refusals more) {
    refusals.insert(refusals.end(), more.begin(), more.end());
}

/// Checks the form of a point's postal code and completes its state.
template <std::size_t Size>
bool CheckPoint(RateContext& context, int32_t(HWT_CALL* verify)(RateContext*),
                const std::string& name, const Point& point, char (&state)[Size],
                Refusals& refusals) {
    const std::string place = name + ".zip";
    if (verify(&context) == 0) {
        refusals.push_back(
            {place, MessageOf(context.ErrorCode), context.ErrorCode, point.zip, PostalCodeForms()});
        return false;
    }
    StateAnswer answer = FindState(context, place, point.zip);
    if (answer.refusals.empty() && point.state.empty()) SetBytes(state, answer.state);
    Append(refusals, std::move(answer.refusals));
    return true;
}

}  // namespace

StateAnswer FindState(RateContext& context, const std::string& place,
                      const std::string& postal_code) {
    char state[3] = "";
    char attribute_a = ' ';
    char attribute_b = ' ';
    context.ErrorCode = 0;
    if (GetStateCode(&context, postal_code.c_str(), state, &attribute_a, &attribute_b) == 1) {
        return {TextOf(state), {}};
    }
    const int32_t code = context.ErrorCode;
    if (code != 0) return {"", {{place, MessageOf(code), code, postal_code}}};
    return {"", {{place, "the postal code lies in no state", 0, postal_code}}};
}

Refusals CheckPoints(const Shipment& shipment, RateContext& context) {
    Refusals refusals;
    const bool origin_ok =
        CheckPoint(context, VerOrigZip, "origin", shipment.origin, context.OrigState, refusals);
    const bool destination_ok = CheckPoint(context, VerDestZip, "destination", shipment.destination,
                                           context.DestState, refusals);
    if (origin_ok && destination_ok && VerTerritory(&context) == 0) {
        refusals.push_back(RefusalOf("origin and destination", context.ErrorCode));
    }
    return refusals;
}

Refusals CheckLines(const Shipment& shipment, RateContext& context) {
    Refusals refusals;
    for (std::size_t i = 0; i < shipment.lines.size(); ++i) {
        const auto line = static_cast<int32_t>(i);
        const std::string name = fmt::format("lines[{}]", i);
        const std::string& class_code = shipment.lines[i].class_code;
        if (VerClass(&context, class_code.c_str(), line, kAllKindsAllowed) == 0) {
            refusals.push_back({name + ".class", MessageOf(context.ErrorCode), context.ErrorCode,
                                class_code, ClassesOf(context)});
        }
        char weight[sizeof context.LineWeight[0]];
        SetBytes(weight, std::to_string(shipment.lines[i].weight));
        if (VerWeight(&context, weight, line) == 0) {
            refusals.push_back(
                {name + ".weight", MessageOf(context.ErrorCode), context.ErrorCode, weight});
        }
    }
    return refusals;
}

}  // namespace cwt
