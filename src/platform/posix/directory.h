// Directories and the names in them, and calls that a signal cuts short.
#pragma once

#include <dirent.h>

#include <cerrno>
#include <memory>
#include <string_view>

#include "platform/path.h"

namespace hundredweight::platform {

/// Makes a call until no signal cuts it short. Result: the call's, negative for a failure.
template <class Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

/// Closes a descriptor. One that a signal interrupts has been closed all the same.
bool Close(int descriptor);

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

std::string_view LastComponent(std::string_view path);

/// The directory that a path's last component lies in, by a name that the system knows.
SystemPath DirectoryName(std::string_view path);
Directory OpenDirectoryOf(std::string_view path);

/// Whether anything has this name in these letters.
bool ExistsExactly(const char* path);

enum class Kind { kAnything, kRegularFile };

/// A name in a directory, empty for none.
struct EntryName {
    char text[sizeof(dirent::d_name)] = "";

    bool empty() const { return text[0] == '\0'; }
};

/// The name that differs from the wanted one in case alone, the first in byte order when there are
/// several.
EntryName FindIgnoringCase(DIR* directory, std::string_view wanted, Kind kind);

/// Replaces the path of a symbolic link by that of what it leads to, which need not be there.
/// Result: false when it leads nowhere.
bool FollowLinks(SystemPath& path);

}  // namespace hundredweight::platform
