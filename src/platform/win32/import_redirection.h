// Calls that a module makes through its table of imported functions.
#pragma once

#include <windows.h>

namespace hundredweight::platform {

/// Lets every import of a module that leads to one function lead to another.
void RedirectImport(HMODULE module, FARPROC from, FARPROC to);

/// A function's address as the import table holds it.
template <class Function>
FARPROC ImportedAddress(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

}  // namespace hundredweight::platform
