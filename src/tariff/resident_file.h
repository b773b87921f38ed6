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

/// A copy of one file, which serves as long as the file proves to be the same and unchanged. A
/// look-up opens its file all the same, so that the system tells which one it is today.
template <class Copy>
class ResidentFile {
 public:
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
