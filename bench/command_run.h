// Runs of programs, as they are seen from outside.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hundredweight::bench {

/// A program's path and its arguments.
using Words = std::vector<std::string>;

/// Runs a program to its end; what it prints is thrown away. Result: its exit code. This and the
/// others throw std::runtime_error when that is 2 or more.
int RunCommand(Words words);

/// The most bytes that the one process of a program had in memory at a time.
std::uint64_t PeakBytes(Words words);

/// The same of a program with all processes that it starts; what they share is counted by halves,
/// thirds and so on. Looked at fifty times a second.
std::uint64_t PeakBytesOfAll(Words words);

}  // namespace hundredweight::bench
