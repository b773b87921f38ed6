#include "reference/service_guide/terminal_network.h"

#include <algorithm>

namespace hundredweight::reference {

const Terminal* TerminalNetwork::FindTerminal(std::string_view code) const {
    const auto found = std::ranges::find(terminals, code, &Terminal::Code);
    return found == terminals.end() ? nullptr : &*found;
}

const ServedArea* TerminalNetwork::FindArea(std::string_view postal_code) const {
    const auto prefix = PostalPrefix(postal_code);
    const auto found = std::ranges::find_if(
        areas, [&](const ServedArea& area) { return area.prefixes.Contains(prefix); });
    return found == areas.end() ? nullptr : &*found;
}

const TransitDays* TerminalNetwork::FindTransitDays(std::string_view from,
                                                    std::string_view to) const {
    const auto found = std::ranges::find_if(transit_days, [&](const TransitDays& days) {
        const auto& [one, other] = days.terminal_codes;
        return (one == from && other == to) || (one == to && other == from);
    });
    return found == transit_days.end() ? nullptr : &*found;
}

}  // namespace hundredweight::reference
