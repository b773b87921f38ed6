#include "platform/win32/import_redirection.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace hundredweight::platform {

void RedirectImport(HMODULE module, FARPROC from, FARPROC to) {
    auto* const image = reinterpret_cast<std::byte*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY table =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    auto* const first = reinterpret_cast<FARPROC*>(image + table.VirtualAddress);
    DWORD protection = 0;
    if (VirtualProtect(first, table.Size, PAGE_READWRITE, &protection) == 0) return;
    std::replace(first, first + table.Size / sizeof *first, from, to);
    VirtualProtect(first, table.Size, protection, &protection);
}

}  // namespace hundredweight::platform
