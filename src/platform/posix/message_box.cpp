#include "platform/message_box.h"

#include <errno.h>
#include <hundredweight/platform.h>

#include <atomic>
#include <cstdio>

namespace {

std::atomic<MessageBoxHandler> message_box_handler{nullptr};
std::atomic<QuitHandler> quit_handler{nullptr};

}  // namespace

void SetMessageBoxHandler(MessageBoxHandler handler) {
    message_box_handler = handler;
}

void SetQuitHandler(QuitHandler handler) {
    quit_handler = handler;
}

namespace hundredweight::platform {

int32_t ShowMessageBox(void* owner, const char* text, const char* caption, uint32_t style) {
    if (const MessageBoxHandler handler = message_box_handler) {
        return handler(owner, text, caption, style);
    }
    std::fprintf(stderr, "%s: %s\n", caption == nullptr ? ApplicationName() : caption, text);
    return 0;
}

void PostQuit(int32_t code) {
    if (const QuitHandler handler = quit_handler) handler(code);
}

const char* ApplicationName() {
    return program_invocation_short_name;
}

}  // namespace hundredweight::platform
