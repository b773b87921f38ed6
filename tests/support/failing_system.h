// Memory that runs short, files that break off and a clock that is wrong, on demand. In the test
// program the library's calls that allocate blocks, read files and ask the time come here first.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace hundredweight {

inline int allocations_to_failure = 0;  // 0: none fails.
inline std::size_t bytes_to_end = SIZE_MAX;
inline int64_t seconds_ahead = 0;  // Of the library's clock.

/// Counts an allocation. Result: whether it fails.
inline bool AllocationFails() {
    return allocations_to_failure > 0 && --allocations_to_failure == 0;
}

/// Takes bytes that a read asks for. Result: how many of them it may have.
inline std::size_t ReadableBytes(std::size_t size) {
    const std::size_t readable = std::min(size, bytes_to_end);
    if (bytes_to_end != SIZE_MAX) bytes_to_end -= readable;
    return readable;
}

/// Lets the n-th allocation from now fail, once; n counts from 1.
struct FailingMemory {
    explicit FailingMemory(int nth) { allocations_to_failure = nth; }
    ~FailingMemory() { allocations_to_failure = 0; }
};

/// Lets every file end after its first byte; for one file at a time.
struct BrokenFile {
    BrokenFile() { bytes_to_end = 1; }
    ~BrokenFile() { bytes_to_end = SIZE_MAX; }
};

}  // namespace hundredweight
