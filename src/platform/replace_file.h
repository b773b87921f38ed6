// Files that get new content as a whole: at every moment the old content or the new one stands
// under the name, also when the disk is full or the process dies. After a failure it is the old
// one, and no temporary is left.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/directory_turn.h"
#include "platform/file.h"

namespace hundredweight::platform {

/// New content of a file: on disk beside it under another name, until it takes the file's. It goes
/// when it does not.
class Replacement {
 public:
    /// The turn may be that of another directory, in which case the file's is taken too. The other
    /// name is one that nothing has, or a working name, which an earlier attempt may have left.
    Replacement(const DirectoryTurn& turn, const char* path, std::string_view working_name = {});
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// The file that is replaced, of the letters and at the place that it has; empty when it cannot
    /// be.
    const char* path() const { return path_.c_str(); }

    /// The new file gets the owner and the rights of a model, when that is there; of the file that
    /// it replaces unless told.
    WriteOutcome Write(const void* content, std::size_t size, const char* model = nullptr);
    bool TakeName();

 private:
    const SystemPath path_;  ///< Empty when the file cannot be replaced.
    std::optional<DirectoryTurn> own_turn_;
    SystemPath working_path_;  ///< Empty for a name that nothing has.
    SystemPath written_;       ///< What has been written and has not taken the name.
};

/// Replaces a file, or creates it. What is there keeps its owner and rights.
WriteOutcome ReplaceFile(const DirectoryTurn& turn, const char* path, const void* content,
                         std::size_t size);

/// Creates a file of a name that nothing has yet.
WriteOutcome CreateFileOnce(const DirectoryTurn& turn, const char* path, const void* content,
                            std::size_t size);

/// The same as a copy of another file.
WriteOutcome CopyFileOnce(const DirectoryTurn& turn, const char* from, const char* path);

}  // namespace hundredweight::platform
