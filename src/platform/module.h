// Partner libraries that the host has loaded.
#pragma once

namespace hundredweight::platform {

/// The address of an exported name in a module, or null.
void* ResolveEntryPoint(void* module, const char* name);

}  // namespace hundredweight::platform
