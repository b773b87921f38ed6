#include "server/supervisor.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>
#include <utility>
#include <vector>

#include "platform/system.h"
#include "server/front_process.h"
#include "server/generation.h"
#include "server/service_log.h"
#include "server/service_messages.h"
#include "session/messages.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;
using Phase = Generation::Phase;

constexpr std::chrono::milliseconds kTick(100);
constexpr std::chrono::seconds kBetweenLooks(1), kBetweenTries(2);

/// A request that waits for a process.
struct Waiting {
    Parcel request;
    Clock::time_point since = Clock::now();
};

class Supervisor {
 public:
    explicit Supervisor(const ServiceTerms& terms)
        : terms_(terms),
          pool_terms_{terms.front.jobs, terms.timeout,
                      [this](std::uint64_t id, std::string reply) { Reply(id, std::move(reply)); },
                      [this](const std::string& reason) { NoteLoss(reason); }} {
        StartFront();
        Begin(false);
    }

    bool Run() {
        for (;;) {
            Await();
            const Wishes wishes = WishesSoFar();
            if (wishes.end > 1) return false;
            if (wishes.end == 1 && !is_stopping_) Stop();
            if (std::exchange(reloads_, wishes.reload) != wishes.reload && !is_stopping_) {
                Begin(false);
            }
            SeeFront();
            if (is_stopping_ && front_->has_ended()) return is_done_;
            SeeGenerations();
            HandOut();
            TellState();
        }
    }

 private:
    void Await() {
        std::vector<WorkerProcess*> processes = {front_.get()};
        for (const auto* one : {&attempt_, &current_, &failed_}) {
            if (*one) (*one)->AddTo(processes);
        }
        for (const auto& one : older_) one->AddTo(processes);
        WorkerProcess::Await(processes, kTick);
    }

    void StartFront() {
        constexpr std::uint64_t kIdsOfOne = std::uint64_t{1} << 40;
        terms_.front.first_id += kIdsOfOne;
        front_ = StartFrontProcess(terms_.front);
        front_since_ = Clock::now();
        told_.clear();
        told_set_ = 0;
    }

    void Stop() {
        is_stopping_ = true;
        LogEvent("stopping", {});
        front_->Send({kStop, {}});
    }

    /// Begins a generation on the data as they are now, in the place of one that is not ready yet.
    void Begin(bool patient) {
        Sources sources = terms_.sources;
        std::error_code error;
        sources.data = std::filesystem::canonical(sources.data, error);
        if (error) sources.data = terms_.sources.data;
        failed_.reset();
        attempt_ = std::make_unique<Generation>(++generations_, sources, pool_terms_, patient);
        LogEvent("loading", {{"generation", generations_}, {"data", PathText(sources.data)}});
    }

    void SeeFront() {
        while (const auto message = front_->Receive()) {
            if (message->kind == kListening) {
                has_listened_ = true;
                LogEvent("listening", {{"address", message->bytes}});
                terms_.front.address.port =
                    std::stoi(message->bytes.substr(message->bytes.rfind(':') + 1));
            } else if (message->kind == kDone) {
                is_done_ = true;
                front_->Finish();
            } else if (message->kind == kBroken) {
                if (!has_listened_) throw Broken(message->bytes);
                LogEvent("front-broken", {{"reason", message->bytes}});
            } else {
                TakeParcel(message->kind, ReadParcel(message->bytes));
            }
        }
        if (!front_->has_ended() || is_stopping_) return;
        const std::string end = front_->End();
        if (!has_listened_) throw Broken("the front has ended, by " + end);
        LogEvent("front-lost", {{"reason", end}});
        for (const auto& one : Serving()) one->pins = 0;
        waiting_.clear();
        pinned_.clear();
        // One that ends again and again must not take all the time there is.
        if (Clock::now() - front_since_ < kBetweenLooks) std::this_thread::sleep_for(kTick);
        StartFront();
    }

    void TakeParcel(std::uint32_t kind, Parcel parcel) {
        if (kind == kPin) {
            const std::uint64_t generation = current_ ? current_->number() : 0;
            if (current_) ++current_->pins;
            front_->Send({kPinned, WriteParcel({parcel.id, generation, {}})});
        } else if (kind == kUnpin) {
            if (Generation* const pinned = Find(parcel.generation)) --pinned->pins;
        } else if (parcel.generation != 0) {
            pinned_.push_back({std::move(parcel)});
        } else if (waiting_.size() < terms_.queue) {
            waiting_.push_back({std::move(parcel)});
        } else {
            Refuse(parcel.id, ProblemKind::kBusy, "The queue is full");
        }
    }

    std::vector<Generation*> Serving() {
        std::vector<Generation*> all;
        if (current_) all.push_back(current_.get());
        for (const auto& one : older_) all.push_back(one.get());
        return all;
    }

    Generation* Find(std::uint64_t number) {
        for (Generation* const one : Serving()) {
            if (one->number() == number) return one;
        }
        return nullptr;
    }

    void Reply(std::uint64_t id, std::string reply) {
        front_->Send({kReply, WriteParcel({id, 0, std::move(reply)})});
    }

    void Refuse(std::uint64_t id, ProblemKind kind, const std::string& why) {
        Reply(id, WriteReply(ProblemReply(kind, why)));
    }

    void NoteLoss(const std::string& reason) {
        ++losses_;
        LogEvent("worker-lost", {{"reason", reason}});
    }

    void SeeGenerations() {
        for (Generation* const one : Serving()) one->See();
        if (failed_) failed_->See();
        if (attempt_) SeeAttempt();
        std::erase_if(older_,
                      [&](const auto& one) { return one->pins <= 0 && !one->pool().IsBusy(); });
        if (!current_ || attempt_ || is_stopping_) return;
        if (Clock::now() >= next_look_) LookForChanges();
        // What has failed is tried again when it is no longer what failed.
        if (!current_->change().empty() && (!failed_ || !failed_->change().empty()) &&
            Clock::now() >= next_try_) {
            LogEvent("data-changed", {{"reason", current_->change()}});
            Begin(true);
        }
    }

    void SeeAttempt() {
        attempt_->See();
        if (attempt_->phase() == Phase::kServing) {
            if (current_) older_.push_back(std::move(current_));
            current_ = std::move(attempt_);
            failure_.clear();
            LogEvent("serving", {{"generation", current_->number()}});
        } else if (attempt_->phase() == Phase::kFailed) {
            if (!current_) throw Broken(attempt_->failure());
            ++reload_failures_;
            failure_ = attempt_->failure();
            failed_ = std::move(attempt_);
            LogEvent("reload-failed", {{"generation", failed_->number()}, {"reason", failure_}});
            next_try_ = Clock::now() + kBetweenTries;
        }
    }

    void LookForChanges() {
        next_look_ = Clock::now() + kBetweenLooks;
        if (failed_) failed_->LookAgain();
        if (!terms_.watch) return;
        current_->LookAgain();
        std::error_code error;
        const auto data = std::filesystem::canonical(terms_.sources.data, error);
        const auto& latest = failed_ ? *failed_ : *current_;
        if (!error && data != latest.sources().data) Begin(true);
    }

    /// Gives what waits to those who are idle, a batch's blocks and others by turns.
    void HandOut() {
        while (!waiting_.empty() && Clock::now() - waiting_.front().since > terms_.timeout) {
            Refuse(waiting_.front().request.id, ProblemKind::kBusy, "No process became free");
            waiting_.pop_front();
        }
        if (!current_ || (IsHopeless(*current_) && !attempt_)) {
            for (const Waiting& one : std::exchange(waiting_, {})) {
                Refuse(one.request.id, ProblemKind::kNotReady, "No process can rate");
            }
        }
        for (bool has_given = true; has_given;) {
            has_given = GivePinned();
            if (!waiting_.empty() && current_->pool().HasIdle()) {
                const Parcel request = std::move(waiting_.front().request);
                waiting_.pop_front();
                current_->pool().Give(request.id, request.bytes);
                has_given = true;
            }
        }
    }

    /// Whether none can rate by a generation, nor will: processes are not started on other data.
    static bool IsHopeless(Generation& generation) {
        const Pool& pool = generation.pool();
        return pool.IsHopeless() || (pool.ready() == 0 && !generation.change().empty());
    }

    bool GivePinned() {
        for (auto one = pinned_.begin(); one != pinned_.end(); ++one) {
            Generation* const generation = Find(one->request.generation);
            const bool is_lost = generation == nullptr || IsHopeless(*generation);
            if (!is_lost && !generation->pool().HasIdle()) continue;
            const Parcel request = std::move(one->request);
            pinned_.erase(one);
            if (is_lost) {
                Refuse(request.id, ProblemKind::kNotReady, "No process can rate");
            } else {
                generation->pool().Give(request.id, request.bytes);
            }
            return true;
        }
        return false;
    }

    void TellState() {
        if (current_ && told_set_ != current_->number()) {
            told_set_ = current_->number();
            front_->Send({kSet, current_->set()});
        }
        Json state = {{"generation", current_ ? current_->number() : 0},
                      {"ready", current_ ? current_->pool().ready() : 0},
                      {"jobs", terms_.front.jobs},
                      {"loading", attempt_ != nullptr},
                      {"failure", failure_.empty() ? Json(nullptr) : Json(failure_)},
                      {"reload_failures", reload_failures_},
                      {"workers_lost", losses_}};
        const bool is_due = Clock::now() - told_at_ > kBetweenLooks;
        std::string text = state.dump(-1, ' ', false, Json::error_handler_t::replace);
        if (text == told_ && !is_due) return;
        told_ = std::move(text);
        told_at_ = Clock::now();
        state["queue"] = waiting_.size() + pinned_.size();
        front_->Send({kState, state.dump(-1, ' ', false, Json::error_handler_t::replace)});
    }

    ServiceTerms terms_;
    const PoolTerms pool_terms_;
    std::unique_ptr<WorkerProcess> front_;
    Clock::time_point front_since_;
    std::unique_ptr<Generation> attempt_, current_, failed_;
    std::vector<std::unique_ptr<Generation>> older_;  ///< That have requests to answer.
    std::deque<Waiting> waiting_, pinned_;
    std::uint64_t generations_ = 0, losses_ = 0, reload_failures_ = 0;
    std::string failure_;  ///< Why the last reload failed, if it did.
    int reloads_ = 0;      ///< Wishes that were seen.
    bool has_listened_ = false, is_stopping_ = false, is_done_ = false;
    Clock::time_point next_look_ = {}, next_try_ = {};
    std::string told_;  ///< The state that the front was told last, but for the queue.
    Clock::time_point told_at_ = {};
    std::uint64_t told_set_ = 0;  ///< The generation whose set it was told.
};

}  // namespace

bool Serve(const ServiceTerms& terms) {
    CountWishes();
    return Supervisor(terms).Run();
}

}  // namespace cwt
