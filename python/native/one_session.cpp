#include "one_session.h"

#include <fmt/core.h>

#include "text/path_text.h"

namespace cwt {
namespace {

/// Guards the session of the process while it is opened and closed.
std::mutex open_mutex;
const OneSession* open_session = nullptr;

}  // namespace

OneSession::OneSession(const Sources& sources) : data_(PathText(sources.data)) {
    const pybind11::gil_scoped_release others;
    const std::lock_guard turn(open_mutex);
    if (open_session != nullptr) {
        throw SessionInUse(fmt::format(
            "this process has a session already, on {}; the library has one engine, one service "
            "guide and one pair of name tables in a process. Close that session first, or rate in "
            "other processes: hundredweight.rate_frame",
            open_session->data()));
    }
    session_ = std::make_unique<Session>(sources);
    said_ = session_->said();
    open_session = this;
}

OneSession::~OneSession() {
    Close();
}

void OneSession::Close() {
    const pybind11::gil_scoped_release others;
    const std::lock_guard turn(open_mutex);
    const std::lock_guard last_turn(mutex_);
    session_.reset();
    if (open_session == this) open_session = nullptr;
}

}  // namespace cwt
