// Partner libraries, loaded for a host.
#include <dlfcn.h>
#include <hundredweight/platform.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t kTextSize = 512;
char partner_library_error[kTextSize];

/// Loads a partner that lies in the directory of this library.
void* LoadBeside(const char* name) {
    Dl_info self = {};
    if (dladdr(reinterpret_cast<const void*>(&LoadPartnerLibrary), &self) == 0 ||
        self.dli_fname == nullptr)
        return nullptr;
    const char* const separator = std::strrchr(self.dli_fname, '/');
    if (separator == nullptr) return nullptr;
    char path[2 * kTextSize];
    std::snprintf(path, sizeof path, "%.*s/lib%s.so", static_cast<int>(separator - self.dli_fname),
                  self.dli_fname, name);
    return dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

void* LoadPartnerLibrary(const char* name) {
    // "tolvex" stands for libtolvex.so; what has a separator or an extension stands for itself.
    const bool bare = std::strpbrk(name, "/.") == nullptr;
    void* module = bare ? LoadBeside(name) : nullptr;
    if (module == nullptr) {
        char file_name[kTextSize];
        std::snprintf(file_name, sizeof file_name, bare ? "lib%s.so" : "%s", name);
        module = dlopen(file_name, RTLD_NOW | RTLD_LOCAL);
    }
    if (module == nullptr) {
        std::snprintf(partner_library_error, sizeof partner_library_error, "%s", dlerror());
    }
    return module;
}

const char* PartnerLibraryError(void) {
    return partner_library_error;
}

void UnloadPartnerLibrary(void* module) {
    if (module != nullptr) dlclose(module);
}
