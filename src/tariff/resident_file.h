// What has been made of a file's content, for the next look-ups in it.
#pragma once

#include <cstddef>
#include <optional>
#include <utility>

#include "platform/file_state.h"
#include "tariff/data_file.h"

namespace hundredweight {

/// The most bytes of one file that are kept.
inline constexpr std::size_t kLargestCopy = std::size_t{64} << 20;

/// A copy of one file, which serves as long as the file proves to be the same and unchanged. The
/// system tells each time which one it is today: a look-up opens it, or asks for the state of what
/// its path leads to, which changes with the file's rights too. The copy is the whole process's:
/// one that gives up rights of its own still finds what it could read before.
template <class Copy>
class ResidentFile {
 public:
    /// The copy when the file of a path is the one that it was made of. Null otherwise: the file
    /// is to be opened then.
    const Copy* CopyAt(const PathText& path) const {
        platform::FileState state;
        const bool serves = copy_ && platform::StateOf(path.c_str(), &state) && state == state_ &&
                            platform::HasSettled(state);
        return serves ? &*copy_ : nullptr;
    }

    /// The copy of an open file. Null when the file has changed just now, or since the last look:
    /// one that is looked at once is not worth a copy. Otherwise `make` makes the copy, or nothing
    /// when it cannot, and null comes back too.
    template <class Maker>
    const Copy* CopyOf(const OpenFile& file, Maker make) {
        const bool settled = platform::HasSettled(file.state());
        if (settled && file.state() == state_ && (copy_ || Make(file, make))) return &*copy_;
        Release();
        if (settled) state_ = file.state();
        return nullptr;
    }

    void Release() { *this = ResidentFile(); }

 private:
    template <class Maker>
    bool Make(const OpenFile& file, Maker make) {
        copy_ = make(file);
        // It may have changed while it was read.
        platform::FileState afterwards;
        return copy_ && platform::StateOf(file.handle(), &afterwards) && afterwards == state_;
    }

    platform::FileState state_;  ///< In which the file was looked at last.
    std::optional<Copy> copy_;
};

}  // namespace hundredweight
