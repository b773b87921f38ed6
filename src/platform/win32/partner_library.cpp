// Partner libraries, loaded for a host.
#include <hundredweight/platform.h>
#include <windows.h>

namespace {

constexpr DWORD kTextSize = 512;
char partner_library_error[kTextSize];

void KeepError(DWORD code) {
    char* const text = partner_library_error;
    DWORD length = FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, code, 0, text, kTextSize, nullptr);
    while (length > 0 && text[length - 1] == ' ') text[--length] = '\0';
    if (length == 0) wsprintfA(text, "system error %lu", code);
}

}  // namespace

void* LoadPartnerLibrary(const char* name) {
    // "tolvex" stands for tolvex.dll; the system looks beside the program first.
    const HMODULE module = LoadLibraryA(name);
    if (module == nullptr) KeepError(GetLastError());
    return module;
}

const char* PartnerLibraryError(void) {
    return partner_library_error;
}

void UnloadPartnerLibrary(void* module) {
    if (module != nullptr) FreeLibrary(static_cast<HMODULE>(module));
}
