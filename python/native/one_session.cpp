#include "one_session.h"

#include <fmt/core.h>

#include "text/path_text.h"

namespace cwt {
namespace {

/// Guards what follows.
std::mutex open_mutex;
OneSession* open_session = nullptr;
bool is_inherited = false;  ///< The process that this one was forked from had a session.
bool is_ending = false;
int forks = 0;  ///< Between the first process and this one.

void RequireNone() {
    if (is_ending) throw SessionInUse("the interpreter is ending; there is no session any more");
    if (is_inherited) {
        throw SessionInUse(
            "this process was forked from one that had a session; start processes anew "
            "(multiprocessing's spawn) and give each its own session");
    }
    if (open_session == nullptr) return;
    throw SessionInUse(fmt::format(
        "this process has a session already, on {}; the library has one engine, one service guide "
        "and one pair of name tables in a process. Close that session first, or rate in other "
        "processes: hundredweight.rate_frame",
        open_session->data()));
}

}  // namespace

OneSession::OneSession(const Sources& sources) : forks_(forks), data_(PathText(sources.data)) {
    const OtherThreads others;
    const std::lock_guard turn(open_mutex);
    RequireNone();
    session_ = std::make_unique<Session>(sources);
    said_ = session_->said();
    open_session = this;
}

OneSession::~OneSession() {
    Close();
    // The engine, its threads and locks are those of the process that opened them.
    if (forks_ != forks) static_cast<void>(session_.release());
}

void OneSession::Close() {
    if (forks_ != forks) return;
    const OtherThreads others;
    const std::lock_guard turn(open_mutex);
    CloseInTurn();
}

void OneSession::CloseInTurn() {
    const std::lock_guard last_turn(mutex_);
    session_.reset();
    if (open_session == this) open_session = nullptr;
}

void OneSession::CloseForGood() {
    const OtherThreads others;
    const std::lock_guard turn(open_mutex);
    is_ending = true;
    if (open_session != nullptr) open_session->CloseInTurn();
}

void OneSession::BeforeFork() {
    open_mutex.lock();
}

void OneSession::AfterForkInParent() {
    open_mutex.unlock();
}

void OneSession::AfterForkInChild() {
    ++forks;
    is_inherited = is_inherited || open_session != nullptr;
    open_session = nullptr;
    open_mutex.unlock();
}

}  // namespace cwt
