#include "platform/replace_file.h"

#include <cstdio>

namespace hundredweight::platform {
namespace {

constexpr int kAttempts = 100;

/// Writes a temporary beside a path; its name is in `temporary` afterwards.
template <std::size_t Size>
WriteOutcome WriteBeside(const char* path, const void* content, std::size_t size,
                         char (&temporary)[Size]) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::snprintf(temporary, Size, "%s.%d", path, attempt);
        if (FileExists(temporary)) continue;
        return WriteNewFile(temporary, content, size);
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
