#include "session/validation.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <cstring>

#include "session/failure.h"
#include "text/field_text.h"

namespace cwt {
namespace {

constexpr int32_t kAllKindsAllowed = 1;

class Complaints {
 public:
    /// Takes down what a check that failed left in the record.
    void Expect(int32_t result, const std::string& what, const RateContext& context) {
        if (result == 0) Add(what, Describe(context.ErrorCode));
    }

    void Add(const std::string& what, const std::string& complaint) {
        list_.push_back(fmt::format("{}: {}", what, complaint));
    }

    std::vector<std::string> Take() { return std::move(list_); }

 private:
    std::vector<std::string> list_;
};

template <std::size_t Size>
void CompleteState(RateContext& context, const std::string& name, const Point& point,
                   char (&state)[Size], Complaints& complaints) {
    const StateAnswer answer = FindState(context, point.zip);
    if (!answer.complaint.empty()) {
        complaints.Add(name, answer.complaint);
    } else if (point.state.empty()) {
        SetText(state, name, answer.state);
    }
}

}  // namespace

StateAnswer FindState(RateContext& context, const std::string& postal_code) {
    char state[3] = "";
    char attribute_a = ' ';
    char attribute_b = ' ';
    context.ErrorCode = 0;
    if (GetStateCode(&context, postal_code.c_str(), state, &attribute_a, &attribute_b) == 1) {
        return {TextOf(state), ""};
    }
    const int32_t code = context.ErrorCode;
    return {"", code != 0 ? Describe(code) : fmt::format("{} lies in no state", postal_code)};
}

std::vector<std::string> ValidatePoints(const Shipment& shipment, RateContext& context) {
    Complaints complaints;
    const bool origin_ok = VerOrigZip(&context) == 1;
    complaints.Expect(origin_ok ? 1 : 0, "origin", context);
    const bool destination_ok = VerDestZip(&context) == 1;
    complaints.Expect(destination_ok ? 1 : 0, "destination", context);
    if (origin_ok) {
        CompleteState(context, "origin", shipment.origin, context.OrigState, complaints);
    }
    if (destination_ok) {
        CompleteState(context, "destination", shipment.destination, context.DestState, complaints);
    }
    if (origin_ok && destination_ok) {
        complaints.Expect(VerTerritory(&context), "origin and destination", context);
    }
    return complaints.Take();
}

std::vector<std::string> ValidateLines(const Shipment& shipment, RateContext& context) {
    Complaints complaints;
    for (std::size_t i = 0; i < shipment.lines.size(); ++i) {
        const auto line = static_cast<int32_t>(i);
        const std::string name = fmt::format("line {}", i + 1);
        const std::string& class_code = shipment.lines[i].class_code;
        complaints.Expect(VerClass(&context, class_code.c_str(), line, kAllKindsAllowed),
                          fmt::format("{}, class {}", name, class_code), context);
        char weight[sizeof context.LineWeight[0]];
        SetText(weight, name, std::to_string(shipment.lines[i].weight));
        complaints.Expect(VerWeight(&context, weight, line),
                          fmt::format("{}, weight {}", name, weight), context);
    }
    return complaints.Take();
}

}  // namespace cwt
