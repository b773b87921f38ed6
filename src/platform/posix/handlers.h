// The host's handlers, which libhundredweight-platform.so keeps and libhundredweight.so asks for.
#pragma once

#include <hundredweight/platform.h>

extern "C" {
/// The handler that the host has installed, or null.
HWT_API MessageBoxHandler HostMessageBoxHandler();
HWT_API QuitHandler HostQuitHandler();
}
