#include "platform/replace_file.h"

#include <cstdio>

#include "platform/path.h"

namespace hundredweight::platform {
namespace {

constexpr int kAttempts = 100;

/// Writes a temporary in a path's directory; its name is in `temporary` afterwards. The name is no
/// longer than that of any file that is written, so that it fits where the file's own does.
template <std::size_t Size>
WriteOutcome WriteBeside(const char* path, const void* content, std::size_t size,
                         char (&temporary)[Size]) {
    const PathParts parts = SplitPathParts(path);
    const auto directory = static_cast<int>(parts.drive.size() + parts.directory.size());
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::snprintf(temporary, Size, "%.*sHWT%d", directory, path, attempt);
        if (!FileExists(temporary)) return WriteNewFile(temporary, content, size);
    }
    return WriteOutcome::kNotCreated;
}

using Rename = bool (*)(const char* from, const char* to);

WriteOutcome WriteThrough(const char* path, const void* content, std::size_t size, Rename rename) {
    char temporary[512];
    const WriteOutcome outcome = WriteBeside(path, content, size, temporary);
    if (outcome != WriteOutcome::kWritten || rename(temporary, path)) return outcome;
    RemoveFile(temporary);
    return WriteOutcome::kNotCreated;
}

}  // namespace

WriteOutcome ReplaceFile(const char* path, const void* content, std::size_t size) {
    return WriteThrough(path, content, size, RenameOver);
}

WriteOutcome CreateFileOnce(const char* path, const void* content, std::size_t size) {
    return WriteThrough(path, content, size, RenameUnlessExists);
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
