#include <fmt/core.h>

#include "session/explained.h"

namespace cwt {
namespace {

void ExplainPoint(const char* topic, const Point& entered, const BillPoint& point,
                  const SettledState& settled, const char* field, Explanation& explanation) {
    Statement statement = {.topic = topic, .figures = {{"zip", point.zip}, {"state", point.state}}};
    statement.words = fmt::format("{} lies in {}{}.", point.zip, settled.state, settled.words);
    statement.sources.push_back(settled.source);
    if (point.state != settled.state) {
        statement.words += fmt::format(" The engine answers {}, which the bill bears.",
                                       point.state.empty() ? "no state" : point.state);
        statement.sources.push_back({.field = field});
    }
    if (entered.city.empty()) {
        statement.words += " No city was entered: the engine takes the first that it has there.";
    }
    explanation.push_back(statement);
}

std::string TerminalText(const char* name, const BillPoint& point) {
    if (point.terminal.empty()) return fmt::format("knows no terminal for the {}", name);
    return fmt::format("serves the {} from terminal {}{}", name, point.terminal,
                       point.service.empty() ? "" : ", service " + point.service);
}

std::string DaysText(const TransitDays& days) {
    if (!days.standard) return " It tells no business days between them.";
    std::string text = fmt::format(" Standard transit is {} business days", *days.standard);
    if (days.guaranteed) text += fmt::format(", guaranteed {}", *days.guaranteed);
    if (days.border.value_or(0) != 0) text += fmt::format(", and {} at the border", *days.border);
    return text + ".";
}

std::string EngineServices(const Bill& bill) {
    if (bill.origin.service.empty() && bill.destination.service.empty()) {
        return "the engine tells no service codes.";
    }
    const auto code = [](const BillPoint& point) {
        return point.service.empty() ? std::string("none") : point.service;
    };
    return fmt::format("the engine's service codes are {} and {}.", code(bill.origin),
                       code(bill.destination));
}

void ExplainGuide(const RatedShipment& rated, Explanation& explanation) {
    const Bill& bill = rated.bill;
    Statement statement = {.topic = "guide",
                           .figures = {{"origin_terminal", bill.origin.terminal},
                                       {"origin_service", bill.origin.service},
                                       {"destination_terminal", bill.destination.terminal},
                                       {"destination_service", bill.destination.service}}};
    statement.sources = {
        {.shipment = "service_guide"}, {.field = "OrigServiceCode"}, {.field = "DestServiceCode"}};
    if (bill.transit_days) {
        statement.words = fmt::format(
            "The service guide {} and {}.{}", TerminalText("origin", bill.origin),
            TerminalText("destination", bill.destination), DaysText(*bill.transit_days));
        for (const char* field :
             {"OrigTerminal", "DestTerminal", "SgValueA", "SgValueB", "SgValueC"}) {
            statement.sources.push_back({.field = field});
        }
    } else {
        statement.words = "The service guide was not asked; " + EngineServices(bill);
    }
    explanation.push_back(statement);
}

}  // namespace

void ExplainPoints(const RatedShipment& rated, Explanation& explanation) {
    ExplainPoint("origin", rated.shipment.origin, rated.bill.origin, rated.origin, "OrigState",
                 explanation);
    ExplainPoint("destination", rated.shipment.destination, rated.bill.destination,
                 rated.destination, "DestState", explanation);
    ExplainGuide(rated, explanation);
}

}  // namespace cwt
