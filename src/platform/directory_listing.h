// Names in other letters, for a load that looks for many files of a directory.
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/block.h"
#include "platform/path.h"

namespace hundredweight::platform {

/// The names of directories that begin alike up to their extension, whatever their letters' case.
/// As long as one lives, a directory of files that are found missing is listed once for all of
/// them. On a system that does not tell case apart nothing is listed.
class DirectoryListing {
 public:
    DirectoryListing();
    ~DirectoryListing();
    DirectoryListing(const DirectoryListing&) = delete;
    DirectoryListing& operator=(const DirectoryListing&) = delete;

    /// The one that lives in this thread; null when there is none.
    static DirectoryListing* Current();

    /// Lists a path's directory for the names that begin as the path's does, unless that is done.
    /// Result: false when it cannot.
    bool List(std::string_view path);

    /// The path of the regular file whose name differs from that of a listed path in case alone,
    /// the first in byte order when there are several; empty for none.
    SystemPath Find(std::string_view path);

 private:
    struct Names {
        bool Add(std::string_view name);

        SystemPath directory;
        SystemPath beginning;
        Block<> names;  ///< Each behind a byte with its length.
        std::size_t size = 0;
        std::size_t capacity = 0;
    };

    Names* NamesOf(std::string_view path);

    /// The set's directory, the user's and the current one.
    static constexpr std::size_t kMostDirectories = 3;

    Names listed_[kMostDirectories];
    std::size_t count_ = 0;  ///< Of those in use.
};

}  // namespace hundredweight::platform
