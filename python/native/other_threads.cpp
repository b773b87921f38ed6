#include "other_threads.h"

#include <cxxabi.h>

#include <chrono>
#include <thread>

namespace cwt {

OtherThreads::OtherThreads() : thread_(PyEval_SaveThread()) {}

OtherThreads::~OtherThreads() {
    try {
        PyEval_RestoreThread(thread_);
    } catch (const abi::__forced_unwind&) {
        // The interpreter ends this thread. Unwound further, its C++ would end the process.
        while (true) std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

}  // namespace cwt
