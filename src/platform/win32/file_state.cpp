#include "platform/file_state.h"

#include <io.h>
#include <windows.h>

#include <algorithm>

namespace hundredweight::platform {
namespace {

constexpr int64_t kSecond = 10000000;  // In units of 100 nanoseconds.
constexpr int64_t kCoarsestUnit = 2 * kSecond;

int64_t Wide(DWORD high, DWORD low) {
    return static_cast<int64_t>(uint64_t{high} << 32 | low);
}

}  // namespace

bool StateOf(int descriptor, FileState* state) {
    const auto file = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    BY_HANDLE_FILE_INFORMATION information = {};
    FILE_BASIC_INFO times = {};
    if (GetFileInformationByHandle(file, &information) == 0 ||
        GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof times) == 0) {
        return false;
    }
    *state = {information.dwVolumeSerialNumber,
              static_cast<uint64_t>(Wide(information.nFileIndexHigh, information.nFileIndexLow)),
              Wide(information.nFileSizeHigh, information.nFileSizeLow),
              times.LastWriteTime.QuadPart, times.ChangeTime.QuadPart};
    return true;
}

bool HasSettled(const FileState& state) {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    const int64_t last = std::max(state.written, state.changed);
    return last != 0 && Wide(now.dwHighDateTime, now.dwLowDateTime) - last >= kCoarsestUnit;
}

}  // namespace hundredweight::platform
