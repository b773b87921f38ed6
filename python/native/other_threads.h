// The interpreter's lock, given up so that other Python threads go on.
#pragma once

#include <pybind11/pybind11.h>

namespace cwt {

/// Gives the lock up while it lives. A thread that wants it back when the interpreter has ended
/// stays here for good: the process ends without it.
class OtherThreads {
 public:
    OtherThreads();
    ~OtherThreads();
    OtherThreads(const OtherThreads&) = delete;
    OtherThreads& operator=(const OtherThreads&) = delete;

 private:
    PyThreadState* const thread_;
};

}  // namespace cwt
