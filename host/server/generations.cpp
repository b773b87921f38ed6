#include "server/generations.h"

#include <filesystem>
#include <utility>

#include "server/service_log.h"
#include "session/messages.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Phase = Generation::Phase;

constexpr std::chrono::seconds kBetweenLooks(1), kBetweenTries(2);

}  // namespace

Generations::Generations(Sources sources, PoolTerms pool, bool watch)
    : sources_(std::move(sources)), pool_(std::move(pool)), watch_(watch) {}

void Generations::AddTo(std::vector<WorkerProcess*>& processes) const {
    for (const auto* one : {&attempt_, &current_, &failed_}) {
        if (*one) (*one)->AddTo(processes);
    }
    for (const auto& one : older_) one->AddTo(processes);
}

void Generations::Unpin() {
    for (Generation* const one : Serving()) one->pins = 0;
}

void Generations::Begin(bool patient) {
    Sources sources = sources_;
    std::error_code error;
    sources.data = std::filesystem::canonical(sources.data, error);
    if (error) sources.data = sources_.data;
    failed_.reset();
    LogEvent("loading", {{"generation", ++count_}, {"data", PathText(sources.data)}});
    attempt_ = std::make_unique<Generation>(count_, sources, pool_, patient);
}

void Generations::See() {
    for (Generation* const one : Serving()) one->See();
    if (failed_) failed_->See();
    if (attempt_) SeeAttempt();
    std::erase_if(older_, [&](const auto& one) { return one->pins <= 0 && !one->pool().IsBusy(); });
    if (!current_ || attempt_ || is_stopping_) return;
    if (Clock::now() >= next_look_) LookForChanges();
    if (attempt_ || Clock::now() < next_try_) return;
    // What has failed is tried again when it is no longer what failed.
    const bool is_changed = !current_->change().empty();
    const bool is_other = !failed_ || !failed_->change().empty();
    if (is_other && (is_changed || (watch_ && failed_))) {
        LogEvent("data-changed", {{"reason", (is_changed ? current_ : failed_)->change()}});
        Begin(true);
    } else if (is_other && failed_) {
        LogEvent("serving", {{"generation", current_->number()}});
        failed_.reset();
        failure_.clear();
    }
}

void Generations::SeeAttempt() {
    attempt_->See();
    if (attempt_->phase() == Phase::kServing) {
        if (current_) older_.push_back(std::move(current_));
        current_ = std::move(attempt_);
        failure_.clear();
        LogEvent("serving", {{"generation", current_->number()}});
    } else if (attempt_->phase() == Phase::kFailed) {
        if (!current_) throw Broken(attempt_->failure());
        ++failures_;
        failure_ = attempt_->failure();
        failed_ = std::move(attempt_);
        LogEvent("reload-failed", {{"generation", failed_->number()}, {"reason", failure_}});
        next_try_ = Clock::now() + kBetweenTries;
    }
}

void Generations::LookForChanges() {
    next_look_ = Clock::now() + kBetweenLooks;
    if (failed_) failed_->LookAgain();
    if (!watch_) return;
    current_->LookAgain();
    std::error_code error;
    const auto data = std::filesystem::canonical(sources_.data, error);
    const auto& latest = failed_ ? *failed_ : *current_;
    if (!error && data != latest.sources().data) Begin(true);
}

std::vector<Generation*> Generations::Serving() {
    std::vector<Generation*> all;
    if (current_) all.push_back(current_.get());
    for (const auto& one : older_) all.push_back(one.get());
    return all;
}

Generation* Generations::Find(std::uint64_t number) {
    for (Generation* const one : Serving()) {
        if (one->number() == number) return one;
    }
    return nullptr;
}

}  // namespace cwt
