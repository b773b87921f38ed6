#include "platform/message_box.h"

#include <errno.h>

#include <cstdio>

#include "platform/posix/handlers.h"

namespace hundredweight::platform {

int32_t ShowMessageBox(void* owner, const char* text, const char* caption, uint32_t style) {
    if (const MessageBoxHandler handler = HostMessageBoxHandler()) {
        return handler(owner, text, caption, style);
    }
    std::fprintf(stderr, "%s: %s\n", caption == nullptr ? ApplicationName() : caption, text);
    return 0;
}

void PostQuit(int32_t code) {
    if (const QuitHandler handler = HostQuitHandler()) handler(code);
}

const char* ApplicationName() {
    return program_invocation_short_name;
}

}  // namespace hundredweight::platform
