#include "platform/win32/import_redirection.h"

#include <cstddef>
#include <cstring>

namespace hundredweight::platform {
namespace {

/// A loaded module, parts of which lie at distances from its start.
class Image {
 public:
    explicit Image(HMODULE module) : start_(reinterpret_cast<std::byte*>(module)) {}

    template <class Part>
    Part* At(std::size_t distance) const {
        return reinterpret_cast<Part*>(start_ + distance);
    }

    const IMAGE_IMPORT_DESCRIPTOR* Imports() const {
        const auto* const headers =
            At<IMAGE_NT_HEADERS>(static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
        return At<IMAGE_IMPORT_DESCRIPTOR>(
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    }

 private:
    std::byte* const start_;
};

/// Where a module keeps the address of an imported function; null when it does not import it.
void** FindImport(const Image& image, const char* library, const char* function) {
    for (const auto* from = image.Imports(); from->Name != 0; ++from) {
        if (_stricmp(image.At<char>(from->Name), library) != 0) continue;
        const auto* name = image.At<IMAGE_THUNK_DATA>(from->OriginalFirstThunk);
        auto* address = image.At<void*>(from->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const import = image.At<IMAGE_IMPORT_BY_NAME>(name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) == 0) {
                return address;
            }
        }
    }
    return nullptr;
}

}  // namespace

void RedirectImport(HMODULE module, const char* library, const char* function, FARPROC to) {
    void** const address = FindImport(Image(module), library, function);
    DWORD protection = 0;
    if (address == nullptr ||
        VirtualProtect(address, sizeof *address, PAGE_READWRITE, &protection) == 0) {
        return;
    }
    InterlockedExchangePointer(address, reinterpret_cast<void*>(to));
    VirtualProtect(address, sizeof *address, protection, &protection);
}

}  // namespace hundredweight::platform
