// A host's own message boxes and quit message in place of the system's. The library calls the
// system's functions, as its hosts expect; a host that wants its own has the library's imports of
// them lead to them instead.
#include <hundredweight/platform.h>
#include <windows.h>

#include <atomic>

#include "platform/win32/import_redirection.h"

// The module that the library is; null stands for a program that it is part of.
#if !defined(HWT_LIBRARY_MODULE)
#define HWT_LIBRARY_MODULE "hundredweight.dll"
#endif

namespace {

using hundredweight::platform::ImportedAddress;
using hundredweight::platform::RedirectImport;

std::atomic<MessageBoxHandler> message_box_handler{nullptr};
std::atomic<QuitHandler> quit_handler{nullptr};

int WINAPI HandleMessageBox(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    return message_box_handler.load()(owner, text, caption, style);
}

void WINAPI HandleQuit(int code) {
    quit_handler.load()(code);
}

/// Puts a handler in the place of a function of the system's, or the function back.
void Install(bool handled, const char* function, FARPROC handler) {
    const HMODULE library = GetModuleHandleA(HWT_LIBRARY_MODULE);
    if (library == nullptr) return;
    const FARPROC system = GetProcAddress(GetModuleHandleA("user32.dll"), function);
    RedirectImport(library, handled ? system : handler, handled ? handler : system);
}

}  // namespace

void SetMessageBoxHandler(MessageBoxHandler handler) {
    if (handler != nullptr) message_box_handler = handler;
    Install(handler != nullptr, "MessageBoxA", ImportedAddress(HandleMessageBox));
}

void SetQuitHandler(QuitHandler handler) {
    if (handler != nullptr) quit_handler = handler;
    Install(handler != nullptr, "PostQuitMessage", ImportedAddress(HandleQuit));
}
