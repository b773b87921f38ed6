// The two requests to the service guide: services of a shipment's points, and their terminals.
#include <hundredweight/exports.h>

#include <cstring>
#include <iterator>
#include <string_view>

#include "frame/failure.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "servguide/service_guide.h"

using namespace hundredweight;

namespace {

constexpr int32_t kGuideFailed = 533;
constexpr int32_t kNoCodeYet = -1;
constexpr std::string_view kEndOfFailures = "1099";
constexpr int32_t kFirstPointwiseStatus = 1101;
constexpr std::string_view kUnknownTerminal = "XXX";

using Slot = char[6];

ServiceGuideBlock& ExchangeBlock() {
    return service_guide.block;
}

std::string_view Status() {
    return WholeField(ExchangeBlock().Status);
}

bool HasFailed() {
    return Status() > kGuideSuccess && Status() < kEndOfFailures;
}

int32_t StatusNumber() {
    return ReadInteger(Status());
}

void PutHeader(const RateContext& context) {
    ServiceGuideBlock& block = ExchangeBlock();
    FillField(block.Status, '\0');
    CopyText(block.RequestKind, "UNQ");
    CopyText(block.SetByte255, WholeField(context.SetByte255));
    block.SetByte260 = context.SetByte260 == '1' ? 'A' : 'B';
}

void PutZip(Slot& slot, const char (&zip)[7]) {
    FillField(slot, '\0');
    CopyText(slot, TerminatedText(zip));
}

/// The guide knows letter postal codes by their first five characters.
void EndLetterZip(Slot& slot) {
    if (!IsDigit(slot[0])) slot[5] = '0';
}

void AskForService() {
    ServiceGuideBlock& block = ExchangeBlock();
    service_guide.entry_points.ServGd_GetServGuideData(block.Status, block.FirstZip);
}

void TakeFirstPoint(RateContext& context) {
    CopyText(context.OrigTerminal, WholeField(ExchangeBlock().FirstTerminal));
    context.OrigServiceCode = ExchangeBlock().FirstServiceCode;
}

void TakeSecondPoint(RateContext& context) {
    CopyText(context.DestTerminal, WholeField(ExchangeBlock().SecondTerminal));
    context.DestServiceCode = ExchangeBlock().SecondServiceCode;
}

void TakeValues(RateContext& context) {
    CopyText(context.SgValueA, WholeField(ExchangeBlock().ValueA));
    CopyText(context.SgValueB, WholeField(ExchangeBlock().ValueB));
    CopyText(context.SgValueC, WholeField(ExchangeBlock().ValueC));
    if (context.SgValueC[0] == '\0') CopyText(context.SgValueC, "00");
}

/// The pair has no answer of its own: each point is asked for in both places.
void AskPointByPoint(RateContext& context) {
    ServiceGuideBlock& block = ExchangeBlock();
    constexpr int32_t kSuccess = 1001;
    PutZip(block.FirstZip, context.OrigZip);
    PutZip(block.SecondZip, context.OrigZip);
    PutHeader(context);
    AskForService();
    if (StatusNumber() == kSuccess) TakeFirstPoint(context);
    PutZip(block.FirstZip, context.DestZip);
    PutZip(block.SecondZip, context.DestZip);
    PutHeader(context);
    AskForService();
    if (StatusNumber() == kSuccess) TakeSecondPoint(context);
    PutZip(block.FirstZip, context.OrigZip);
}

template <std::size_t Size>
void ClearUnknownTerminal(const RateContext& context, char (&code)[Size]) {
    if (context.BlankUnknownTerminals != 'Y') return;
    if (WholeField(code).starts_with(kUnknownTerminal)) FillField(code, '\0');
}

/// Gives each text of the answer a terminator.
void TakeTerminal(char* record) {
    constexpr std::size_t kWidths[] = {50, 5, 50, 50, 30, 2, 10, 12, 12, 12, 100, 50, 50};
    const char* answer = reinterpret_cast<const char*>(&ExchangeBlock().Terminal);
    for (const std::size_t width : kWidths) {
        std::memcpy(record, answer, width);
        record[width] = '\0';
        record += width + 1;
        answer += width;
    }
}

bool AskForTerminal(RateContext& context, const Slot& zip, TerminalRecord& record) {
    ServiceGuideBlock& block = ExchangeBlock();
    PutHeader(context);
    FillField(block.Terminal.F2, '\0');
    CopyText(block.TerminalZip, WholeField(zip));
    service_guide.entry_points.ServGd_GetTerminals(block.Status, block.TerminalZip);
    if (HasFailed()) return false;
    if (Status() == kGuideSuccess) TakeTerminal(reinterpret_cast<char*>(&record));
    return true;
}

}  // namespace

int32_t HWT_CALL GetService(RateContext* record) {
    RateContext& context = *record;
    FillField(context.SgValueA, '\0');
    FillField(context.SgValueB, '\0');
    FillField(context.SgValueC, '\0');
    if (context.UseServiceGuide == 0) return 1;
    if (service_guide.entry_points.ServGd_GetServGuideData == nullptr) {
        return Fail(context, kGuideFailed);
    }
    ServiceGuideBlock& block = ExchangeBlock();
    PutHeader(context);
    PutZip(block.FirstZip, context.OrigZip);
    PutZip(block.SecondZip, context.DestZip);
    EndLetterZip(block.FirstZip);
    EndLetterZip(block.SecondZip);
    AskForService();
    FillField(context.OrigTerminal, '\0');
    FillField(context.DestTerminal, '\0');
    FillField(context.SgValueC, '\0');
    context.OrigServiceCode = ' ';
    context.DestServiceCode = ' ';
    if (HasFailed()) return Fail(context, kGuideFailed);
    if (StatusNumber() < kFirstPointwiseStatus) {
        TakeFirstPoint(context);
        TakeSecondPoint(context);
        TakeValues(context);
    } else {
        AskPointByPoint(context);
    }
    ClearUnknownTerminal(context, context.OrigTerminal);
    ClearUnknownTerminal(context, context.DestTerminal);
    return 1;
}

int32_t HWT_CALL GetTerminals(RateContext* record) {
    RateContext& context = *record;
    if (context.UseServiceGuide == 0) return 1;
    context.ErrorCode = kNoCodeYet;
    std::memset(&context.OrigTerminalRecord, 0, sizeof context.OrigTerminalRecord);
    std::memset(&context.DestTerminalRecord, 0, sizeof context.DestTerminalRecord);
    if (service_guide.entry_points.ServGd_GetTerminals == nullptr) {
        return Fail(context, kGuideFailed);
    }
    const ServiceGuideBlock& block = ExchangeBlock();
    if (!AskForTerminal(context, block.FirstZip, context.OrigTerminalRecord) ||
        !AskForTerminal(context, block.SecondZip, context.DestTerminalRecord)) {
        return Fail(context, kGuideFailed);
    }
    ClearUnknownTerminal(context, context.OrigTerminalRecord.F2);
    ClearUnknownTerminal(context, context.DestTerminalRecord.F2);
    return 1;
}
