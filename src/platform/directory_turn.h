// Processes that replace files of one directory do so one after another.
#pragma once

#include <cstdint>

namespace hundredweight::platform {

/// A turn to change files of a directory. While it lasts no other process of the machine that waits
/// for its turn changes one, so that a file which is there to be converted can be looked at again.
/// Temporaries that a killed process left are removed when the turn is taken.
class DirectoryTurn {
 public:
    /// Waits for the turn in the directory that a path's file really lies in, up to ten seconds.
    explicit DirectoryTurn(const char* path);
    ~DirectoryTurn();
    DirectoryTurn(const DirectoryTurn&) = delete;
    DirectoryTurn& operator=(const DirectoryTurn&) = delete;

    /// Whether files may be changed.
    explicit operator bool() const { return state_ != State::kNotTaken; }
    /// Whether no other process of the machine changes files now. Where the system cannot tell,
    /// files may be changed all the same, each through a temporary that no other process names.
    bool alone() const { return state_ == State::kAlone; }
    /// Whether a path's file lies in this directory.
    bool Covers(const char* path) const;

 private:
    enum class State { kNotTaken, kAlone, kUnguarded };

    State state_ = State::kNotTaken;
    std::intptr_t lock_ = -1;          ///< What the system gave for the turn.
    std::uint64_t directory_[2] = {};  ///< What tells the directory from others.
};

}  // namespace hundredweight::platform
