/**
 * What a host lends the library and is lent by it, apart from rating: message boxes, the quit
 * message, the loading of partner libraries, and a few texts. Texts are terminated. These functions
 * are in a library of their own, hundredweight-platform: a shared one, and on Windows a static one
 * that becomes part of the host. A Windows host need not have them.
 */
#ifndef HUNDREDWEIGHT_PLATFORM_H
#define HUNDREDWEIGHT_PLATFORM_H

#include <hundredweight/abi.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Shows a box and waits until the user closes it. The owner is the window that owns the box, or
 *  null; the texts hold during the call. The style is a Windows style: 0x10 an error, 0x30 a
 *  warning, each with an OK button, 0x24 a question with Yes and No, 0 a plain text with OK.
 *  Result: the button that closed it, 1 OK, 6 Yes, 7 No; 0 when it could not be shown. */
typedef int32_t (*MessageBoxHandler)(void* owner, const char* text, const char* caption,
                                     uint32_t style);
/** Ends the host's message loop; the argument is the exit code. */
typedef void (*QuitHandler)(int32_t code);

/** Installs the host's message box, for the whole process; null restores the default, which is the
 *  system's message box on Windows and elsewhere writes caption and text to standard error and
 *  counts as not shown. On Windows, install it after hundredweight.dll has been loaded, and again
 *  whenever the DLL is loaded again; until then it has no effect. A module of the host's that is to
 *  be unloaded must restore the default first. */
HWT_API void SetMessageBoxHandler(MessageBoxHandler handler);
/** Installs the host's way to quit, for the whole process; null restores the default, which posts
 *  the quit message to the calling thread on Windows and does nothing elsewhere. On Windows the
 *  same holds as for the message box. */
HWT_API void SetQuitHandler(QuitHandler handler);

/** Loads a partner library: a path, or a bare name such as "tolvex" that is looked for beside this
 *  library (on Windows beside the program) and where the system looks. Result: the module for
 *  RateContext.EngineModule or ServiceGuideModule, which the host gives to UnloadPartnerLibrary at
 *  the end; or null. */
HWT_API void* LoadPartnerLibrary(const char* name);
/** Why the last LoadPartnerLibrary that failed did; empty when none has. Result: a text of the
 *  library's own, valid until the next failure. */
HWT_API const char* PartnerLibraryError(void);
/** Unloads what LoadPartnerLibrary returned; null is allowed. The partner must have been ended
 *  (EndTolvexdll, EndSGdll) and must not be called again. */
HWT_API void UnloadPartnerLibrary(void* module);

/** Version of the library, such as "0.1.0"; HWT_VERSION of version.h is that of the headers. */
HWT_API const char* HundredweightVersion(void);
/** The message of a code as the boxes show it, "Error occurred." for a code without one, and no
 * box. Result: a text of the library's own, valid until the next call. */
HWT_API const char* ErrorCodeText(int32_t code);

#ifdef __cplusplus
}
#endif

#endif
