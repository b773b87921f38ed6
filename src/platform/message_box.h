// Message boxes and the end of the host's message loop.
#pragma once

#include <cstdint>

namespace hundredweight::platform {

inline constexpr uint32_t kBoxOk = 0x00;
inline constexpr uint32_t kBoxYesNo = 0x04;
inline constexpr uint32_t kBoxIconError = 0x10;
inline constexpr uint32_t kBoxIconQuestion = 0x20;
inline constexpr uint32_t kBoxIconExclamation = 0x30;
inline constexpr int32_t kAnswerNo = 7;

/// Shows a modal box. Result: the button that closed it, 0 when the box could not be shown.
int32_t ShowMessageBox(void* owner, const char* text, const char* caption, uint32_t style);

/// Ends the calling thread's message loop with an exit code.
void PostQuit(int32_t code);

/// The running program's name, the caption of boxes that have none of their own.
const char* ApplicationName();

}  // namespace hundredweight::platform
