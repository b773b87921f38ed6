// The three message functions.
#include <hundredweight/exports.h>

#include <array>
#include <cstring>
#include <string_view>

#include "frame/error_text.h"
#include "frame/text.h"
#include "platform/message_box.h"

namespace hundredweight {
namespace {

/// Shows the caller's text, or the message of the code when the text is empty.
int32_t ShowMessage(const char* text, const char* caption, int32_t code, void* owner,
                    uint32_t style) {
    char message[kMessageSize] = {};
    const std::string_view own_text = text == nullptr ? "" : text;
    if (own_text.empty()) {
        GetErrorText(code, message);
    } else {
        PutText(message, own_text);
    }
    return platform::ShowMessageBox(owner, message, caption, style);
}

}  // namespace
}  // namespace hundredweight

using namespace hundredweight;

void HWT_CALL fatal(const char* text, const char* caption, int32_t code) {
    ShowMessage(text, caption, code, nullptr, platform::kBoxOk | platform::kBoxIconError);
    platform::PostQuit(code);
}

int32_t HWT_CALL warning(const char* text, const char* caption, int32_t code, void* owner) {
    return ShowMessage(text, caption, code, owner,
                       platform::kBoxOk | platform::kBoxIconExclamation);
}

int32_t HWT_CALL question(const char* text, const char* caption, int32_t code, void* owner) {
    const int32_t answer =
        ShowMessage(text, caption, code, owner, platform::kBoxYesNo | platform::kBoxIconQuestion);
    return answer == platform::kAnswerNo ? 0 : 1;
}
