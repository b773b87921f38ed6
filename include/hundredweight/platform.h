/**
 * What a host owns on Windows and is lent elsewhere: message boxes, the quit message, and the
 * loading of partner libraries.
 */
#ifndef HUNDREDWEIGHT_PLATFORM_H
#define HUNDREDWEIGHT_PLATFORM_H

#include <hundredweight/abi.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Shows a box of a Windows style (0x10 error, 0x30 warning, 0x24 question) and returns the button
 *  that closed it: 1 OK, 6 Yes, 7 No, 0 when it could not be shown. */
typedef int32_t (*MessageBoxHandler)(void* owner, const char* text, const char* caption,
                                     uint32_t style);
/** Ends the host's message loop with an exit code. */
typedef void (*QuitHandler)(int32_t code);

#if !defined(_WIN32)
/** Installs the host's message box; null restores the default, which writes the text to standard
 *  error and counts as not shown. */
HWT_API void SetMessageBoxHandler(MessageBoxHandler handler);
/** Installs the host's way to quit; null restores the default, which does nothing. */
HWT_API void SetQuitHandler(QuitHandler handler);
#endif

/** Loads a partner library: a path, or a bare name such as "tolvex" that is looked for beside this
 *  library and where the system looks. Result: the module for RateContext.EngineModule, or null. */
HWT_API void* LoadPartnerLibrary(const char* name);
/** Why the last LoadPartnerLibrary of this thread failed. */
HWT_API const char* PartnerLibraryError(void);
/** Unloads what LoadPartnerLibrary returned; null is allowed. */
HWT_API void UnloadPartnerLibrary(void* module);

#ifdef __cplusplus
}
#endif

#endif
