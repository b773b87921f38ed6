// Names in other letters, for a load that looks for many files of a directory.
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/block.h"
#include "platform/path.h"

namespace hundredweight::platform {

/// The names of a directory that begin alike up to their extension, whatever their letters' case.
/// As long as one lives, the directory of files that its thread finds missing is listed once for
/// all of them. On a system that does not tell case apart nothing is listed.
class DirectoryListing {
 public:
    DirectoryListing();
    ~DirectoryListing();
    DirectoryListing(const DirectoryListing&) = delete;
    DirectoryListing& operator=(const DirectoryListing&) = delete;

    /// The one that this thread has; null when it has none.
    static DirectoryListing* Current();

    /// Lists a path's directory for the names that begin as the path's does, unless that is done.
    /// Result: false when it cannot.
    bool List(std::string_view path);

    /// The path of the regular file whose name differs from that of a listed path in case alone,
    /// the first in byte order when there are several; empty for none.
    SystemPath Find(std::string_view path) const;

 private:
    bool HasListed(std::string_view path);
    bool Add(std::string_view name);

    bool listed_ = false;
    SystemPath directory_;
    SystemPath beginning_;
    Block<> names_;  ///< Each behind a byte with its length.
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace hundredweight::platform
