#include "reference/service_guide/answers.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "reference/text/columns.h"

namespace hundredweight::reference {
namespace {

/// Zero bytes for none, which a library tells from blanks.
void PutDays(std::span<char> column, std::string_view days) {
    PutLeft(column, days);
    if (days.empty()) std::ranges::fill(column, '\0');
}

void PutTransitDays(ServiceGuideBlock& block, const TransitDays& days) {
    PutDays(block.ValueA, days.standard);
    PutDays(block.ValueB, days.guaranteed);
    PutDays(block.ValueC, days.border);
}

}  // namespace

void WriteStatus(ServiceGuideBlock& block, GuideStatus status) {
    PutLeft(block.Status, std::to_string(static_cast<int>(status)));
}

GuideStatus AnswerService(const TerminalNetwork& network, ServiceGuideBlock& block) {
    const ServedArea* const first = network.FindArea(ColumnText(block.FirstZip));
    const ServedArea* const second = network.FindArea(ColumnText(block.SecondZip));
    if (!first && !second) return GuideStatus::kUnknownPoint;
    if (!first) return GuideStatus::kUnknownFirstPoint;
    if (!second) return GuideStatus::kUnknownSecondPoint;
    PutLeft(block.FirstTerminal, first->terminal_code);
    PutLeft(block.SecondTerminal, second->terminal_code);
    block.FirstServiceCode = first->service;
    block.SecondServiceCode = second->service;
    const auto* const days = network.FindTransitDays(first->terminal_code, second->terminal_code);
    PutTransitDays(block, days ? *days : TransitDays{});
    return GuideStatus::kSuccess;
}

GuideStatus AnswerTerminal(const TerminalNetwork& network, ServiceGuideBlock& block) {
    const ServedArea* const area = network.FindArea(ColumnText(block.TerminalZip));
    if (!area) return GuideStatus::kUnknownPoint;
    const Terminal& terminal = *network.FindTerminal(area->terminal_code);
    char* column = reinterpret_cast<char*>(&block.Terminal);
    for (std::size_t i = 0; i < kTerminalWidths.size(); ++i) {
        PutLeft({column, kTerminalWidths[i]}, terminal.texts[i]);
        column += kTerminalWidths[i];
    }
    return GuideStatus::kSuccess;
}

GuideStatus AnswerTransitDays(const TerminalNetwork& network, ServiceGuideBlock& block) {
    const auto* const days =
        network.FindTransitDays(ColumnText(block.FirstTerminal), ColumnText(block.SecondTerminal));
    if (!days) return GuideStatus::kNoTransitDays;
    PutTransitDays(block, *days);
    return GuideStatus::kSuccess;
}

}  // namespace hundredweight::reference
