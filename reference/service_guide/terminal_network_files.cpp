#include <utility>

#include "reference/service_guide/terminal_network.h"
#include "reference/text/columns.h"
#include "reference/text/text_rows.h"

namespace hundredweight::reference {
namespace {

void AddTerminal(TerminalNetwork& network, Fields fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        Require(fields[i].size() <= kTerminalWidths[i], "'", fields[i], "' is too long");
    }
    Terminal terminal{{fields.begin(), fields.end()}};
    Require(!terminal.Code().empty(), "a terminal has a code");
    Require(!network.FindTerminal(terminal.Code()), "the terminal is on file already");
    network.terminals.push_back(std::move(terminal));
}

std::string ReadTerminalCode(const TerminalNetwork& network, std::string_view text) {
    Require(network.FindTerminal(text) != nullptr, "terminal '", text, "' is not on file");
    return std::string(text);
}

ServedArea ReadArea(const TerminalNetwork& network, Fields fields) {
    Require(fields[2].size() == 1, "a service code is one character");
    return {ReadPrefixes(fields[0]), ReadTerminalCode(network, fields[1]), fields[2].front()};
}

std::string ReadDays(std::string_view text) {
    const bool digits = DigitsValue(text).has_value() && text.size() <= 2;
    Require(digits || text.empty(), "'", text, "' is no number of days");
    return std::string(text.size() == 1 ? "0" : "").append(text);
}

TransitDays ReadTransitDays(const TerminalNetwork& network, Fields fields) {
    Require(!fields[2].empty(), "the standard days are missing");
    return {{ReadTerminalCode(network, fields[0]), ReadTerminalCode(network, fields[1])},
            ReadDays(fields[2]),
            ReadDays(fields[3]),
            ReadDays(fields[4])};
}

}  // namespace

TerminalNetwork ReadTerminalNetwork(const std::string& directory) {
    TerminalNetwork network;
    ForEachRow(directory, "servgd-terminals.txt", kTerminalWidths.size(),
               [&](Fields fields) { AddTerminal(network, fields); });
    ForEachRow(directory, "servgd-points.txt", 3,
               [&](Fields fields) { network.areas.push_back(ReadArea(network, fields)); });
    ForEachRow(directory, "servgd-transit.txt", 5, [&](Fields fields) {
        network.transit_days.push_back(ReadTransitDays(network, fields));
    });
    return network;
}

}  // namespace hundredweight::reference
