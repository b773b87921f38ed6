#include "platform/replace_file.h"

#include <cstdio>

#include "platform/path.h"

namespace hundredweight::platform {
namespace {

constexpr int kAttempts = 100;

/// Makes a temporary in a path's directory by `write`, and lets it take the path's name. Its own
/// name is no longer than that of any file that is written, so that it fits where the file's does.
template <class Write>
WriteOutcome WriteThrough(const char* path, bool (&rename)(const char* from, const char* to),
                          Write write) {
    const PathParts parts = SplitPathParts(path);
    const auto directory = static_cast<int>(parts.drive.size() + parts.directory.size());
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        char temporary[512];
        std::snprintf(temporary, sizeof temporary, "%.*sHWT%d", directory, path, attempt);
        if (FileExists(temporary)) continue;
        const WriteOutcome outcome = write(temporary);
        if (outcome != WriteOutcome::kWritten || rename(temporary, path)) return outcome;
        RemoveFile(temporary);
        break;
    }
    return WriteOutcome::kNotCreated;
}

}  // namespace

WriteOutcome ReplaceFile(const char* path, const void* content, std::size_t size) {
    return WriteThrough(path, RenameOver, [&](const char* temporary) {
        return WriteNewFile(temporary, content, size);
    });
}

WriteOutcome CreateFileOnce(const char* path, const void* content, std::size_t size) {
    return WriteThrough(path, RenameUnlessExists, [&](const char* temporary) {
        return WriteNewFile(temporary, content, size);
    });
}

WriteOutcome CopyFileOnce(const char* from, const char* path) {
    return WriteThrough(path, RenameUnlessExists,
                        [&](const char* temporary) { return CopyToNewFile(from, temporary); });
}

WriteOutcome ReplaceFileThrough(const char* temporary, const char* path, const void* content,
                                std::size_t size) {
    RemoveFile(temporary);
    const WriteOutcome outcome = WriteNewFile(temporary, content, size);
    if (outcome != WriteOutcome::kWritten || RenameOver(temporary, path)) return outcome;
    RemoveFile(temporary);
    return WriteOutcome::kNotCreated;
}

}  // namespace hundredweight::platform
