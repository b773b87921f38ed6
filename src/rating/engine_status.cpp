#include "rating/engine_status.h"

#include <iterator>
#include <optional>
#include <string_view>

#include "engine/engine.h"
#include "frame/bounds.h"
#include "frame/inline_text.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "platform/message_box.h"
#include "rating/rating_run.h"

namespace hundredweight {
namespace {

constexpr int32_t kNoAnswer = -1;
constexpr std::size_t kMessageRoom = 90;
constexpr std::size_t kStatusLength = 4;

using Message = InlineText<kMessageRoom - 1>;

bool StartsWithCode(std::string_view text) {
    return text.size() >= kStatusLength && ReadInteger(text.substr(0, kStatusLength)) > 0;
}

/// Makes "01230123Text" and "0123Text" read "0123 Text".
Message Reformat(std::string_view text) {
    if (text.size() > kStatusLength && ReadInteger(text.substr(kStatusLength, kStatusLength)) > 0) {
        text.remove_prefix(kStatusLength);
    }
    if (!StartsWithCode(text)) return text;
    return Message(text.substr(0, kStatusLength)).Append(" ").Append(text.substr(kStatusLength));
}

/// Asks the engine for a status code's message. Result: nothing when the engine has none.
std::optional<Message> FetchMessage(std::string_view status) {
    const auto get_text = engine.entry_points.Tolvex_GetErrorStringEx;
    if (get_text == nullptr) return std::nullopt;
    char buffer[kMessageRoom] = {};
    CopyText(buffer, status);
    // The engine writes the text into the buffer; its result only tells whether there is one.
    if (get_text(engine.EngineHandle, buffer) == nullptr) return std::nullopt;
    return Reformat(TerminatedText(buffer, kMessageRoom - 1));
}

void BlankPoints(RateContext& context) {
    FillField(context.OrigState, ' ');
    FillField(context.OrigCity, ' ');
    FillField(context.DestState, ' ');
    FillField(context.DestCity, ' ');
}

void FetchAlternatives(RateContext& context) {
    if (engine.EngineResultBlock->NoAlternatives != 0) return;
    const EngineListBlock& list = *engine.EngineListBlock;
    engine.entry_points.Tolvex_RateShipment2Ex(engine.EngineHandle, &engine.EngineRateRecord,
                                               engine.EngineListBlock.get());
    LayOutEngineTables(context);
    if (list.Count == kNoAnswer) {
        context.ErrorCode = kNoAlternatives;
        return;
    }
    const int32_t count = BoundedCount(list.Count, std::size(context.EngineList));
    for (int32_t entry = 0; entry < count; ++entry) {
        CopyText(context.EngineList[entry].Text, WholeField(list.Entries[entry].Text));
        CopyText(context.EngineList[entry].Code, WholeField(list.Entries[entry].Code));
    }
    CopyText(context.EngineListHeader, WholeField(list.Header));
    context.EngineListCount = count;
}

}  // namespace

void HandleEngineStatus(RateContext& context) {
    if (context.QuietEngineErrors != 0) {
        context.ErrorCode = kEngineRefused;
        return;
    }
    if (context.OrigZip[0] == '\0' || context.DestZip[0] == '\0') {
        context.ErrorCode = 0;
        return;
    }
    const std::string_view status = WholeField(engine.EngineRateRecord.Status);
    const int32_t status_code = ReadInteger(status);
    const std::optional<Message> message = FetchMessage(status);
    switch (status_code) {
        case 11:
            break;
        case 123:
        case 124:
        case 125:
        case 126:
            FetchAlternatives(context);
            return;
        default:
            BlankPoints(context);
    }
    if (!message) return;
    context.ErrorCode = kEngineRefused;
    platform::ShowMessageBox(nullptr, message->c_str(), "TOLVEX Warning",
                             platform::kBoxOk | platform::kBoxIconExclamation);
}

}  // namespace hundredweight
