// The one session that a process may have, for one Python thread at a time.
#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "session/session.h"

namespace cwt {

/// A second session in a process.
struct SessionInUse : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// All records of a process share one engine, one service guide and one pair of name tables, so
/// that one session is open at a time; after it is closed there may be another.
class OneSession {
 public:
    /// Called with the interpreter's lock, which is given up meanwhile. Throws SessionInUse.
    explicit OneSession(const Sources& sources);
    ~OneSession();
    OneSession(const OneSession&) = delete;
    OneSession& operator=(const OneSession&) = delete;

    /// Waits for the thread that rates. Closing twice is allowed.
    void Close();

    /// Gives the interpreter's lock up, waits for the other threads, and does something with the
    /// session. Throws pybind11::value_error when it is closed.
    template <class Do>
    auto Use(Do use) {
        const pybind11::gil_scoped_release others;
        const std::lock_guard turn(mutex_);
        if (!session_) throw pybind11::value_error("the session is closed");
        return use(*session_);
    }

    const std::string& data() const { return data_; }
    const std::string& said() const { return said_; }

 private:
    std::mutex mutex_;
    std::unique_ptr<Session> session_;
    std::string data_, said_;
};

}  // namespace cwt
