// What the service guide answers to a request in the exchange block.
#pragma once

#include <hundredweight/service_guide_interface.h>

#include "reference/service_guide/terminal_network.h"

namespace hundredweight::reference {

/// Below 1099 all but kSuccess refuse the request. From 1101 on a library asks for each of the two
/// points on its own.
enum class GuideStatus {
    kSuccess = 1001,
    kNotStarted = 1002,
    kMalformedRequest = 1003,
    kUnknownPoint = 1011,
    kNoTransitDays = 1012,
    kUnknownFirstPoint = 1101,
    kUnknownSecondPoint = 1102,
};

void WriteStatus(ServiceGuideBlock& block, GuideStatus status);

// Without success these leave the block as it is.

/// Terminals and service codes of the two points, and the days between the terminals.
GuideStatus AnswerService(const TerminalNetwork& network, ServiceGuideBlock& block);
/// The terminal that serves a point.
GuideStatus AnswerTerminal(const TerminalNetwork& network, ServiceGuideBlock& block);
/// The days between the two terminals whose codes stand where a service answer has them.
GuideStatus AnswerTransitDays(const TerminalNetwork& network, ServiceGuideBlock& block);

}  // namespace hundredweight::reference
