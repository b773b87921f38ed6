#include "platform/module.h"

#include <dlfcn.h>

namespace hundredweight::platform {

void* ResolveEntryPoint(void* module, const char* name) {
    // Without a module dlsym would look through the whole process.
    return module == nullptr ? nullptr : dlsym(module, name);
}

}  // namespace hundredweight::platform
