#include "server/pool.h"

#include <fmt/core.h>

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/system.h"
#include "server/service_log.h"
#include "server/service_messages.h"
#include "session/live_files.h"

namespace cwt {
namespace {

constexpr std::chrono::seconds kForStart(60);

/// What a process does.
void Work(const Sources& sources, Foreman& foreman) {
    IgnoreWishes();
    std::optional<Session> session;
    try {
        session.emplace(sources);
        session->Prepare();
        LiveFiles live(sources);
        foreman.Send({ServiceMessage::kReady, session->said()});
        while (const auto message = foreman.Receive()) {
            const Parcel asked = ReadParcel(message->bytes);
            DeskReply reply = AnswerRequest(*session, ReadRequest(asked.bytes));
            const std::string changed = live.Changed();
            if (!changed.empty()) {
                reply = ProblemReply(ProblemKind::kDataChanged,
                                     changed + " is not what it was when the rating began");
            }
            foreman.Send({changed.empty() ? ServiceMessage::kReply : ServiceMessage::kStale,
                          WriteParcel({asked.id, 0, WriteReply(reply)})});
        }
    } catch (const std::exception& error) {
        foreman.Send({ServiceMessage::kBroken, error.what()});
    }
}

}  // namespace

void Pool::Start() {
    workers_.resize(terms_.jobs);
    for (Worker& worker : workers_) StartOne(worker);
}

void Pool::StartOne(Worker& worker) {
    worker.state = State::kStarting;
    worker.is_looked_for = false;
    worker.since = Clock::now();
    try {
        worker.process =
            std::make_unique<WorkerProcess>([this](Foreman& foreman) { Work(sources_, foreman); });
    } catch (const std::system_error& error) {
        Lose(worker, ProblemKind::kNotReady, error.what());
    }
}

void Pool::AddTo(std::vector<WorkerProcess*>& processes) const {
    for (const Worker& worker : workers_) {
        if (worker.process) processes.push_back(worker.process.get());
    }
}

std::size_t Pool::CountOf(State state) const {
    return static_cast<std::size_t>(std::ranges::count(workers_, state, &Worker::state));
}

bool Pool::IsHopeless() const {
    return std::ranges::all_of(workers_, [](const Worker& worker) {
        return worker.state == State::kLost && worker.failures > 0;
    });
}

void Pool::See() {
    for (Worker& worker : workers_) {
        if (!worker.process) continue;
        while (worker.process) {
            const auto message = worker.process->Receive();
            if (!message) break;
            Take(worker, *message);
        }
        if (worker.process && worker.process->has_ended()) {
            const std::string end = worker.process->End();
            Lose(worker, ProblemKind::kPartnerEnded,
                 "a partner library has ended the process, by " + end);
        }
        if (worker.process) RequireInTime(worker);
    }
}

void Pool::Take(Worker& worker, const Message& message) {
    switch (message.kind) {
        case ServiceMessage::kReady:
            worker.state = State::kLoaded;
            worker.failures = 0;
            if (!message.bytes.empty()) LogEvent("partner-said", {{"text", message.bytes}});
            break;
        case ServiceMessage::kReply:
            if (Deliver(worker, message.bytes)) worker.state = State::kIdle;
            break;
        case ServiceMessage::kStale:
            if (Deliver(worker, message.bytes))
                Lose(worker, ProblemKind::kDataChanged, "the data changed during a rating");
            break;
        default:
            Lose(worker, ProblemKind::kBrokenData, message.bytes);
    }
}

/// A partner that has forked may have both processes answer, and at any time. Result: whether the
/// reply is to the request at hand.
bool Pool::Deliver(Worker& worker, const std::string& bytes) {
    const Parcel reply = ReadParcel(bytes);
    if (worker.state != State::kBusy || reply.id != worker.request) {
        Lose(worker, ProblemKind::kPartnerEnded, "a partner library has answered twice");
        return false;
    }
    worker.state = State::kLoaded;
    terms_.deliver(reply.id, reply.bytes);
    return true;
}

void Pool::RequireInTime(Worker& worker) {
    const bool is_starting = worker.state == State::kStarting;
    if (!is_starting && worker.state != State::kBusy) return;
    const auto limit = is_starting ? std::max(terms_.timeout, kForStart) : terms_.timeout;
    if (Clock::now() - worker.since <= limit) return;
    Lose(worker, ProblemKind::kPartnerLate, fmt::format("no answer in {} seconds", limit.count()));
}

/// Answers what the process worked on by a problem, and leaves it to be started anew: at once, or
/// later the more often it could not begin.
void Pool::Lose(Worker& worker, ProblemKind kind, const std::string& reason) {
    constexpr int kMostDoublings = 8;
    constexpr std::chrono::milliseconds kFirstPause(100);
    worker.process.reset();
    if (worker.state == State::kBusy) {
        terms_.deliver(worker.request, WriteReply(ProblemReply(kind, reason)));
    }
    if (worker.state == State::kStarting) {
        failure_ = reason;
        worker.again =
            Clock::now() + kFirstPause * (1 << std::min(worker.failures, kMostDoublings));
        ++worker.failures;
    }
    worker.state = State::kLost;
    worker.is_looked_for = false;
    if (has_served_) terms_.when_lost(reason);
}

void Pool::Give(std::uint64_t id, const std::string& request) {
    Worker& worker = *std::ranges::find(workers_, State::kIdle, &Worker::state);
    worker.request = id;
    worker.state = State::kBusy;
    worker.since = Clock::now();
    worker.process->Send({ServiceMessage::kAsk, WriteParcel({id, 0, request})});
}

bool Pool::WantsLook() {
    bool wants = false;
    for (Worker& worker : workers_) {
        worker.is_looked_for = worker.state == State::kLoaded ||
                               (worker.state == State::kLost && Clock::now() >= worker.again);
        wants = wants || worker.is_looked_for;
    }
    return wants;
}

void Pool::Confirm() {
    for (Worker& worker : workers_) {
        if (!std::exchange(worker.is_looked_for, false)) continue;
        if (worker.state == State::kLoaded) {
            worker.state = State::kIdle;
            has_served_ = true;
        }
        if (worker.state == State::kLost) StartOne(worker);
    }
}

}  // namespace cwt
