#include "platform/file_state.h"

#include <io.h>
#include <windows.h>

namespace hundredweight::platform {
namespace {

int64_t Wide(DWORD high, DWORD low) {
    return static_cast<int64_t>(uint64_t{high} << 32 | low);
}

}  // namespace

bool StateOf(int descriptor, FileState* state) {
    const auto file = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileInformationByHandle(file, &information) == 0) return false;
    *state = {
        information.dwVolumeSerialNumber,
        static_cast<uint64_t>(Wide(information.nFileIndexHigh, information.nFileIndexLow)),
        Wide(information.nFileSizeHigh, information.nFileSizeLow),
        Wide(information.ftLastWriteTime.dwHighDateTime, information.ftLastWriteTime.dwLowDateTime),
        0};
    return true;
}

bool StateOf(const char* /*path*/, FileState* /*state*/) {
    return false;
}

/// A file's times may stay what they are until the last handle that it is written by is closed, so
/// that nothing proves it unchanged.
bool HasSettled(const FileState& /*state*/) {
    return false;
}

}  // namespace hundredweight::platform
