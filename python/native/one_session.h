// The one session that a process may have, for one Python thread at a time.
#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "other_threads.h"
#include "session/session.h"

namespace cwt {

/// A second session in a process, or one that a process was forked from.
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

    /// Waits for the thread that rates. Closing twice is allowed. Does nothing in a fork of the
    /// process that opened the session.
    void Close();

    /// Closes the session that is open, and lets no other be opened: the interpreter ends.
    static void CloseForGood();

    /// Around a fork: no session is opened or closed meanwhile, so that the new process does not
    /// inherit a lock that nobody gives back.
    static void BeforeFork();
    static void AfterForkInParent();
    static void AfterForkInChild();

    /// Gives the interpreter's lock up, waits for the other threads, and does something with the
    /// session. Throws pybind11::value_error when it is closed.
    template <class Do>
    auto Use(Do use) {
        const OtherThreads others;
        const std::lock_guard turn(mutex_);
        if (!session_) throw pybind11::value_error("the session is closed");
        return use(*session_);
    }

    const std::string& data() const { return data_; }
    const std::string& said() const { return said_; }

 private:
    void CloseInTurn();

    const int forks_;  ///< Between the first process and this one, when it was opened.
    std::mutex mutex_;
    std::unique_ptr<Session> session_;
    std::string data_, said_;
};

}  // namespace cwt
