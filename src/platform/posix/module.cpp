#include "platform/module.h"

#include <dlfcn.h>
#include <hundredweight/platform.h>

#include <string>

namespace {

thread_local std::string partner_library_error;

/// "tolvex" stands for libtolvex.so; whatever has a separator or an extension stands for itself.
std::string FileName(const std::string& name) {
    const bool bare = name.find_first_of("/.") == std::string::npos;
    return bare ? "lib" + name + ".so" : name;
}

}  // namespace

void* LoadPartnerLibrary(const char* name) {
    void* const module = dlopen(FileName(name).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) partner_library_error = dlerror();
    return module;
}

const char* PartnerLibraryError(void) {
    return partner_library_error.c_str();
}

void UnloadPartnerLibrary(void* module) {
    if (module != nullptr) dlclose(module);
}

namespace hundredweight::platform {

void* ResolveEntryPoint(void* module, const char* name) {
    // Without a module dlsym would look through the whole process.
    return module == nullptr ? nullptr : dlsym(module, name);
}

}  // namespace hundredweight::platform
