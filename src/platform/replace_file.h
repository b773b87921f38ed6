// Files that get new content as a whole: at every moment the old content or the new one stands
// under the name, also when the disk is full or the process dies. After a failure it is the old
// one, and no temporary is left.
#pragma once

#include <cstddef>

#include "platform/file.h"

namespace hundredweight::platform {

/// Replaces a file, or creates it, through a temporary beside it whose name nothing else has.
WriteOutcome ReplaceFile(const char* path, const void* content, std::size_t size);

/// The same through a temporary of a given name, which an earlier attempt may have left.
WriteOutcome ReplaceFileThrough(const char* temporary, const char* path, const void* content,
                                std::size_t size);

/// Creates a file of a name that nothing has yet.
WriteOutcome CreateFileOnce(const char* path, const void* content, std::size_t size);

/// The same as a copy of another file.
WriteOutcome CopyFileOnce(const char* from, const char* path);

}  // namespace hundredweight::platform
