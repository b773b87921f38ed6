// The carrier's terminals, the areas that they serve and the days between them.
#pragma once

#include <hundredweight/service_guide_interface.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "reference/text/postal_prefixes.h"

namespace hundredweight::reference {

/// Characters of a terminal's texts: name, code, two address lines, city, state, postal code,
/// telephone, toll-free telephone, fax, hours, manager, electronic mail.
inline constexpr std::array kTerminalWidths = {
    sizeof(TerminalAnswer::F1),  sizeof(TerminalAnswer::F2),  sizeof(TerminalAnswer::F3),
    sizeof(TerminalAnswer::F4),  sizeof(TerminalAnswer::F5),  sizeof(TerminalAnswer::F6),
    sizeof(TerminalAnswer::F7),  sizeof(TerminalAnswer::F8),  sizeof(TerminalAnswer::F9),
    sizeof(TerminalAnswer::F10), sizeof(TerminalAnswer::F11), sizeof(TerminalAnswer::F12),
    sizeof(TerminalAnswer::F13)};

struct Terminal {
    std::vector<std::string> texts;  ///< One per width, none of them wider.
    const std::string& Code() const { return texts[1]; }
};

struct ServedArea {
    PrefixRange prefixes;
    std::string terminal_code;
    char service = ' ';  ///< 'D' served directly, 'I' through another carrier.
};

/// Business days between two terminals, in both directions. Two digits, or empty for none.
struct TransitDays {
    std::string terminal_codes[2];
    std::string standard;
    std::string guaranteed;  ///< At an extra charge.
    std::string border;      ///< What customs may add.
};

struct TerminalNetwork {
    std::vector<Terminal> terminals;
    std::vector<ServedArea> areas;  ///< The first that fits holds.
    std::vector<TransitDays> transit_days;

    /// Null when there is none.
    const Terminal* FindTerminal(std::string_view code) const;
    const ServedArea* FindArea(std::string_view postal_code) const;
    const TransitDays* FindTransitDays(std::string_view from, std::string_view to) const;
};

/// Reads the text files of a directory. Throws std::runtime_error with file, line and reason when
/// one is missing or malformed.
TerminalNetwork ReadTerminalNetwork(const std::string& directory);

}  // namespace hundredweight::reference
