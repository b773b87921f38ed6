#include "platform/message_box.h"

#include <windows.h>

#include <cstring>

namespace hundredweight::platform {
namespace {

/// The program's file name without directory and extension.
struct ProgramName {
    char text[MAX_PATH] = "";

    ProgramName() {
        char path[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, path, sizeof path - 1);
        const char* const separator = std::strrchr(path, '\\');
        std::strcpy(text, separator == nullptr ? path : separator + 1);
        if (char* const dot = std::strrchr(text, '.')) *dot = '\0';
    }
};

}  // namespace

int32_t ShowMessageBox(void* owner, const char* text, const char* caption, uint32_t style) {
    return MessageBoxA(static_cast<HWND>(owner), text, caption, style);
}

void PostQuit(int32_t code) {
    PostQuitMessage(code);
}

const char* ApplicationName() {
    static const ProgramName name;
    return name.text;
}

}  // namespace hundredweight::platform
