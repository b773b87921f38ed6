#include "platform/module.h"

#include <windows.h>

#include <cstring>

namespace hundredweight::platform {

void* ResolveEntryPoint(void* module, const char* name) {
    if (module == nullptr) return nullptr;
    const FARPROC function = GetProcAddress(static_cast<HMODULE>(module), name);
    void* address = nullptr;
    std::memcpy(&address, &function, sizeof address);
    return address;
}

}  // namespace hundredweight::platform
