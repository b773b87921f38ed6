#include "reference/service_guide/entry_points.h"

#include <cstddef>
#include <cstdio>
#include <exception>
#include <optional>
#include <string_view>
#include <type_traits>

#include "reference/service_guide/answers.h"
#include "reference/service_guide/terminal_network.h"

namespace {

using namespace hundredweight::reference;

// A caller finds the entry points by name, so nothing else checks their arguments.
static_assert(std::is_same_v<decltype(&ServGd_Initialize), ServGd_InitializeFunction>);
static_assert(std::is_same_v<decltype(&ServGd_GetServGuideData), ServGd_GetServGuideDataFunction>);
static_assert(std::is_same_v<decltype(&ServGd_GetTerminals), ServGd_GetTerminalsFunction>);
static_assert(
    std::is_same_v<decltype(&ServGd_GetTermToTermDays), ServGd_GetTermToTermDaysFunction>);
static_assert(std::is_same_v<decltype(&ServGd_Terminate), ServGd_TerminateFunction>);

/// What the service guide was started on.
std::optional<TerminalNetwork> network;

GuideStatus Start(ServiceGuideBlock& block) {
    network.reset();
    const std::string_view field(block.DataDirectory, sizeof block.DataDirectory);
    try {
        network = ReadTerminalNetwork(std::string(field.substr(0, field.find('\0'))));
        return GuideStatus::kSuccess;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "servgd: %s\n", error.what());
        return GuideStatus::kNotStarted;
    }
}

/// Lets an action answer through the block. Both pointers point into it, so data that begin
/// elsewhere are not followed.
template <typename Action>
int32_t Answer(char* block_bytes, const char* data, std::size_t data_offset, Action action) {
    if (!block_bytes) return 0;
    auto& block = *reinterpret_cast<ServiceGuideBlock*>(block_bytes);
    const auto status =
        data == block_bytes + data_offset ? action(block) : GuideStatus::kMalformedRequest;
    WriteStatus(block, status);
    return status == GuideStatus::kSuccess;
}

using RequestAnswer = GuideStatus (*)(const TerminalNetwork&, ServiceGuideBlock&);

int32_t AnswerRequest(char* block_bytes, const char* data, std::size_t data_offset,
                      RequestAnswer answer) {
    return Answer(block_bytes, data, data_offset, [&](ServiceGuideBlock& block) {
        const std::string_view kind(block.RequestKind, sizeof block.RequestKind);
        if (kind != "UNQ") return GuideStatus::kMalformedRequest;
        return network ? answer(*network, block) : GuideStatus::kNotStarted;
    });
}

}  // namespace

int32_t HWT_CALL ServGd_Initialize(char* block, char* data) {
    return Answer(block, data, offsetof(ServiceGuideBlock, GuideBytes1), Start);
}

int32_t HWT_CALL ServGd_GetServGuideData(char* block, char* data) {
    return AnswerRequest(block, data, offsetof(ServiceGuideBlock, FirstZip), AnswerService);
}

int32_t HWT_CALL ServGd_GetTerminals(char* block, char* data) {
    return AnswerRequest(block, data, offsetof(ServiceGuideBlock, TerminalZip), AnswerTerminal);
}

int32_t HWT_CALL ServGd_GetTermToTermDays(char* block, char* data) {
    return AnswerRequest(block, data, offsetof(ServiceGuideBlock, FirstTerminal),
                         AnswerTransitDays);
}

uint8_t HWT_CALL ServGd_Terminate(void) {
    const bool started = network.has_value();
    network.reset();
    return started;
}
