// Functions of a partner library, bound by name into a structure of function pointers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "platform/module.h"

namespace hundredweight {

struct EntryPoint {
    const char* name;
    int32_t code_when_missing;
    std::size_t offset;  ///< Of the function pointer in its structure.
};

/// Binds names in their order up to the first that a module lacks; the others stay as they were.
/// Result: 0, or the code of the missing one.
inline int32_t BindEntryPoints(void* module, std::span<const EntryPoint> names, void* functions) {
    for (const EntryPoint& entry_point : names) {
        void* const function = platform::ResolveEntryPoint(module, entry_point.name);
        if (function == nullptr) return entry_point.code_when_missing;
        std::memcpy(static_cast<char*>(functions) + entry_point.offset, &function, sizeof function);
    }
    return 0;
}

}  // namespace hundredweight
