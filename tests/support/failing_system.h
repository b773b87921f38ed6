// Memory that runs short and files that break off, on demand. The test program is linked so that
// the library's calls of calloc and read come here first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hundredweight {

inline int allocations_to_failure = 0;  // 0: none fails.
inline std::size_t bytes_to_end = SIZE_MAX;

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
