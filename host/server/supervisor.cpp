#include "server/supervisor.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <nlohmann/json.hpp>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "platform/system.h"
#include "server/front_process.h"
#include "server/generations.h"
#include "server/service_log.h"
#include "server/service_messages.h"
#include "session/messages.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::chrono::milliseconds kTick(100);
constexpr std::chrono::seconds kBetweenStates(1);

/// A request that waits for a process.
struct Waiting {
    Parcel request;
    Clock::time_point since = Clock::now();
};

class Supervisor {
 public:
    explicit Supervisor(const ServiceTerms& terms)
        : terms_(terms),
          generations_(
              terms.sources,
              {terms.front.jobs, terms.timeout,
               [this](std::uint64_t id, std::string reply) { Reply(id, std::move(reply)); },
               [this](const std::string& reason) { NoteLoss(reason); }},
              terms.watch) {
        StartFront();
        generations_.Begin(false);
    }

    bool Run() {
        for (;;) {
            Await();
            const Wishes wishes = WishesSoFar();
            if (wishes.end > 1) {
                LogEvent("cut-off", {{"reason", "asked twice to end"}});
                return false;
            }
            if (wishes.end == 1 && !is_stopping_) Stop();
            if (std::exchange(reloads_, wishes.reload) != wishes.reload && !is_stopping_) {
                generations_.Begin(false);
            }
            SeeFront();
            if (is_stopping_ && front_->has_ended()) return is_done_;
            generations_.See();
            HandOut();
            TellState();
        }
    }

 private:
    void Await() {
        std::vector<WorkerProcess*> processes = {front_.get()};
        generations_.AddTo(processes);
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
        generations_.Stop();
        LogEvent("stopping", {});
        front_->Send({ServiceMessage::kStop, {}});
    }

    void SeeFront() {
        while (const auto message = front_->Receive()) {
            if (message->kind == ServiceMessage::kListening) {
                has_listened_ = true;
                LogEvent("listening", {{"address", message->bytes}});
                terms_.front.address.port =
                    std::stoi(message->bytes.substr(message->bytes.rfind(':') + 1));
            } else if (message->kind == ServiceMessage::kDone) {
                is_done_ = true;
                front_->Finish();
            } else if (message->kind == ServiceMessage::kBroken) {
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
        generations_.Unpin();
        waiting_.clear();
        pinned_.clear();
        // One that ends again and again must not take all the time there is.
        if (Clock::now() - front_since_ < kBetweenStates) std::this_thread::sleep_for(kTick);
        try {
            StartFront();
        } catch (const std::system_error& error) {
            LogEvent("front-lost", {{"reason", error.what()}});
        }
    }

    void TakeParcel(std::uint32_t kind, Parcel parcel) {
        if (kind == ServiceMessage::kPin) {
            Generation* const current = generations_.current();
            if (current != nullptr) ++current->pins;
            const std::uint64_t number = current == nullptr ? 0 : current->number();
            front_->Send({ServiceMessage::kPinned, WriteParcel({parcel.id, number, {}})});
        } else if (kind == ServiceMessage::kUnpin) {
            if (Generation* const pinned = generations_.Find(parcel.generation)) --pinned->pins;
        } else if (parcel.generation != 0) {
            pinned_.push_back({std::move(parcel)});
        } else if (waiting_.size() < terms_.queue) {
            waiting_.push_back({std::move(parcel)});
        } else {
            Refuse(parcel.id, ProblemKind::kBusy, "The queue is full");
        }
    }

    void Reply(std::uint64_t id, std::string reply) {
        front_->Send({ServiceMessage::kReply, WriteParcel({id, 0, std::move(reply)})});
    }

    void Refuse(std::uint64_t id, ProblemKind kind, const std::string& why) {
        Reply(id, WriteReply(ProblemReply(kind, why)));
    }

    void NoteLoss(const std::string& reason) {
        ++losses_;
        LogEvent("worker-lost", {{"reason", reason}});
    }

    /// Gives what waits to those who are idle, a batch's blocks and others by turns.
    void HandOut() {
        while (!waiting_.empty() && Clock::now() - waiting_.front().since > terms_.timeout) {
            Refuse(waiting_.front().request.id, ProblemKind::kBusy, "No process became free");
            waiting_.pop_front();
        }
        Generation* const current = generations_.current();
        if (current == nullptr || (IsHopeless(*current) && !generations_.is_loading())) {
            for (const Waiting& one : std::exchange(waiting_, {})) {
                Refuse(one.request.id, ProblemKind::kNotReady, "No process can rate");
            }
        }
        bool has_given = true;
        while (has_given) {
            has_given = is_batch_next_ ? GivePinned() || GiveFirst(current)
                                       : GiveFirst(current) || GivePinned();
        }
    }

    bool GiveFirst(Generation* current) {
        if (waiting_.empty() || !current->pool().HasIdle()) return false;
        const Parcel request = std::move(waiting_.front().request);
        waiting_.pop_front();
        current->pool().Give(request.id, request.bytes);
        is_batch_next_ = true;
        return true;
    }

    /// Whether none can rate by a generation, nor will: processes are not started on other data.
    static bool IsHopeless(Generation& generation) {
        const Pool& pool = generation.pool();
        return pool.IsHopeless() || (pool.ready() == 0 && !generation.change().empty());
    }

    bool GivePinned() {
        is_batch_next_ = false;
        for (auto one = pinned_.begin(); one != pinned_.end(); ++one) {
            Generation* const generation = generations_.Find(one->request.generation);
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
        Generation* const current = generations_.current();
        const std::uint64_t number = current == nullptr ? 0 : current->number();
        if (current != nullptr && told_set_ != number) {
            told_set_ = number;
            front_->Send({ServiceMessage::kSet, current->set()});
        }
        const std::string& failure = generations_.failure();
        Json state = {{"generation", number},
                      {"ready", current == nullptr ? 0 : current->pool().ready()},
                      {"failure", failure.empty() ? Json(nullptr) : Json(failure)},
                      {"reload_failures", generations_.failures()},
                      {"workers_lost", losses_}};
        const bool is_due = Clock::now() - told_at_ > kBetweenStates;
        std::string text = state.dump(-1, ' ', false, Json::error_handler_t::replace);
        if (text == told_ && !is_due) return;
        told_ = std::move(text);
        told_at_ = Clock::now();
        state["queue"] = waiting_.size();
        front_->Send(
            {ServiceMessage::kState, state.dump(-1, ' ', false, Json::error_handler_t::replace)});
    }

    ServiceTerms terms_;
    Generations generations_;
    std::unique_ptr<WorkerProcess> front_;
    Clock::time_point front_since_;
    std::deque<Waiting> waiting_, pinned_;
    std::uint64_t losses_ = 0;  ///< Of processes that rate.
    int reloads_ = 0;           ///< Wishes that were seen.
    bool is_batch_next_ = false;
    bool has_listened_ = false, is_stopping_ = false, is_done_ = false;
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
