#include "platform/module.h"

#include <hundredweight/platform.h>
#include <windows.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t kTextSize = 512;
thread_local char partner_library_error[kTextSize];

}  // namespace

void* LoadPartnerLibrary(const char* name) {
    // "tolvex" stands for tolvex.dll; the system looks beside the program first.
    const HMODULE module = LoadLibraryA(name);
    if (module == nullptr) {
        std::snprintf(partner_library_error, sizeof partner_library_error, "system error %lu",
                      GetLastError());
    }
    return module;
}

const char* PartnerLibraryError(void) {
    return partner_library_error;
}

void UnloadPartnerLibrary(void* module) {
    if (module != nullptr) FreeLibrary(static_cast<HMODULE>(module));
}

namespace hundredweight::platform {

void* ResolveEntryPoint(void* module, const char* name) {
    if (module == nullptr) return nullptr;
    const FARPROC function = GetProcAddress(static_cast<HMODULE>(module), name);
    void* address = nullptr;
    std::memcpy(&address, &function, sizeof address);
    return address;
}

}  // namespace hundredweight::platform
