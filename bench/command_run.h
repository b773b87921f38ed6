// A run of a command, as it is seen from outside.
#pragma once

#include <cstdint>
#include <string>

namespace hundredweight::bench {

struct CommandRun {
    double seconds = 0;
    /// The most bytes at a time that its processes had of their own; what they share is counted
    /// by halves, thirds and so on. Looked at fifty times a second.
    std::uint64_t peak_bytes = 0;
};

/// Runs the words in a shell to their end. Throws std::runtime_error when the exit code is 2 or
/// more.
CommandRun RunCommand(const std::string& words);

}  // namespace hundredweight::bench
