// A disk that gives out between two file operations of the library. In the test program the
// library's calls that open, read, write, flush, close, rename and remove files come to the disk
// first. A struck write leaves half its bytes, a struck close has closed.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace hundredweight {

enum class Cut { kOneFails, kAllFailFromThere, kProcessDies };
inline constexpr int kDied = 99;  ///< Exit code of a process that died at an operation.

/// Strikes the n-th file operation from now, counted from 1; 0 strikes none.
struct FailingDisk {
    explicit FailingDisk(int nth = 0, Cut how = Cut::kOneFails) : to_strike(nth), cut(how) {
        current = this;
    }
    ~FailingDisk() { current = nullptr; }

    static bool Strikes();         ///< Counts an operation, and tells whether it is struck.
    static int Fail();             ///< What a struck operation comes to.
    static bool ContentStrikes();  ///< The same for a write.
    static bool FlushStrikes();    ///< The same for a flush.
    static void NoteName();        ///< A file is about to get its name.
    static void CountRead(std::ptrdiff_t size);

    inline static FailingDisk* current = nullptr;
    int to_strike;
    const Cut cut;
    bool struck = false;           ///< Whether there were that many operations.
    bool content_struck = false;   ///< Whether it was a write, or the flush of one.
    bool flushed = true;           ///< Whether all that was written is on the disk.
    bool named_unflushed = false;  ///< Whether a file got its name before it was on the disk.
    std::size_t bytes_read = 0;
    std::vector<std::string> created;  ///< Paths opened to be created.
};

}  // namespace hundredweight
