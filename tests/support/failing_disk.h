// A disk that gives out between two file operations of the library. In the test program the
// library's calls that open, lock, read, write, flush, close, rename and remove files come to the
// disk first.
#pragma once

#include <cstddef>
#include <vector>

namespace hundredweight {

/// What a struck operation comes to. A struck write leaves half its bytes, a struck close has
/// closed.
enum class Fault {
    kIoError,
    kDiskFull,
    kAllFailFromThere,
    kFileEnds,     ///< For a read; other operations work.
    kShort,        ///< Half the bytes are read or written; other operations work.
    kInterrupted,  ///< By a signal, before anything was done.
    kDiesBefore,
    kDiesAfter,
    kAllDelayed,  ///< By chance, and none fails.
};
/// Those that a system knows and a process survives.
extern const std::vector<Fault> kFaults;
inline constexpr int kDied = 99;  ///< Exit code of a process that died at an operation.

/// Strikes the n-th file operation from now, counted from 1; 0 strikes none.
struct FailingDisk {
    explicit FailingDisk(int nth = 0, Fault what = Fault::kIoError) : to_strike(nth), fault(what) {
        current = this;
    }
    ~FailingDisk() { current = nullptr; }

    /// Makes a call of the system's unless it is struck.
    template <class Result, class Call>
    static Result Do(Result failure, Call call) {
        if (!Strikes() || current->fault == Fault::kFileEnds || current->fault == Fault::kShort)
            return call();
        if (current->fault == Fault::kDiesAfter) call();
        Fail();
        return failure;
    }
    /// The same for one that reads or writes as many bytes as it is told.
    template <class Call>
    static std::ptrdiff_t Transfer(bool writes, std::size_t size, Call call) {
        if (current != nullptr) current->flushed &= !writes;
        if (!Strikes()) return call(size);
        if (current->fault == Fault::kShort) return call((size + 1) / 2);
        if (current->fault == Fault::kFileEnds) return writes ? call(size) : 0;
        current->content_struck |= writes && current->fault != Fault::kInterrupted;
        if (current->fault == Fault::kDiesAfter) call(size);
        if (writes && current->fault != Fault::kInterrupted) call(size / 2);
        Fail();
        return -1;
    }
    static int NoteFlush(int result);  ///< Of a call that flushes.
    static void NoteName();            ///< A file is about to get its name.

    inline static FailingDisk* current = nullptr;
    inline static bool knows_locks = true;
    int to_strike;
    const Fault fault;
    bool struck = false;           ///< Whether there were that many operations.
    bool content_struck = false;   ///< Whether it was a write, or the flush of one.
    bool flushed = true;           ///< Whether all that was written is on the disk.
    bool named_unflushed = false;  ///< Whether a file got its name before it was on the disk.
    unsigned rights = 0;           ///< All that a file had when it was written.
    std::size_t bytes_read = 0;
    int directories_listed = 0;

 private:
    static bool Strikes();  ///< Counts an operation, and tells whether it is struck.
    static void Fail();     ///< Dies, or tells the system's error.
};

}  // namespace hundredweight
