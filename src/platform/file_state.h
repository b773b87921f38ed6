// What tells a file in one state from every other file, and from itself in another state.
#pragma once

#include <cstdint>

namespace hundredweight::platform {

struct FileState {
    uint64_t volume = 0;
    uint64_t file = 0;
    int64_t size = 0;     ///< In bytes.
    int64_t written = 0;  ///< Times count from the system's epoch, in its own unit;
    int64_t changed = 0;  ///< 0 where the system knows none.

    bool operator==(const FileState&) const = default;
};

/// Asks the state of an open file. Result: whether the system tells.
bool StateOf(int descriptor, FileState* state);

/// The same of what a path leads to, in the path's own letters; a file system of another machine is
/// asked anew. False also where no state proves a file unchanged.
bool StateOf(const char* path, FileState* state);

/// Whether every change from now on gives the file other times: the last one is so old that no
/// clock and no file system counts both as one moment. Not so what is written to a mapping that
/// others share, which gives it times once for many changes.
bool HasSettled(const FileState& state);

}  // namespace hundredweight::platform
