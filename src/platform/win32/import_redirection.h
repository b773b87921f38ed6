// Calls that a module makes through its table of imported functions.
#pragma once

#include <windows.h>

namespace hundredweight::platform {

/// Lets a module's import of a library's function lead elsewhere; nothing when it has no such
/// import. Calls that run go on where they are.
void RedirectImport(HMODULE module, const char* library, const char* function, FARPROC to);

/// A function's address as the import table holds it.
template <class Function>
FARPROC ImportedAddress(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

}  // namespace hundredweight::platform
