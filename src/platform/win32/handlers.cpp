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

/// Lets a function of the system's that the library calls lead to a handler, or to itself again.
void Install(const char* function, bool handled, FARPROC handler) {
    const HMODULE library = GetModuleHandleA(HWT_LIBRARY_MODULE);
    if (library == nullptr) return;
    const FARPROC system = GetProcAddress(GetModuleHandleA("user32.dll"), function);
    RedirectImport(library, "user32.dll", function, handled ? handler : system);
}

}  // namespace

void SetMessageBoxHandler(MessageBoxHandler handler) {
    if (handler != nullptr) message_box_handler = handler;
    Install("MessageBoxA", handler != nullptr, ImportedAddress(HandleMessageBox));
}

void SetQuitHandler(QuitHandler handler) {
    if (handler != nullptr) quit_handler = handler;
    Install("PostQuitMessage", handler != nullptr, ImportedAddress(HandleQuit));
}
