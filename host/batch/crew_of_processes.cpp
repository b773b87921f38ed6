#include <fmt/core.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <utility>
#include <vector>

#include "batch/crew.h"
#include "batch/crew_messages.h"
#include "platform/worker_process.h"
#include "session/messages.h"

namespace cwt {
namespace {

using Clock = std::chrono::steady_clock;

/// A block on its way. A row that a worker has died of is tried once more, alone in a new process;
/// what comes of that is known when the block is rated anew.
struct Task {
    Job job;
    std::optional<std::uint32_t> alone;  ///< The place of the row that is tried.

    Job JobAtHand() const {
        if (!alone) return job;
        Job one;
        one.packed = false;
        one.block.first_row = job.block.first_row + *alone;
        one.block.lengths = {job.block.lengths[*alone]};
        one.block.text = RowText(*alone);
        return one;
    }

    std::string_view RowText(std::uint32_t place) const {
        std::size_t begin = 0;
        for (std::uint32_t i = 0; i < place; ++i) begin += job.block.lengths[i];
        return std::string_view(job.block.text).substr(begin, job.block.lengths[place]);
    }
};

/// What a worker does.
void Work(const CrewTerms& terms, Foreman& foreman) {
    const auto reason = [](const std::exception& error) { return std::string(error.what()); };
    std::optional<Session> session;
    try {
        session.emplace(Fixed(terms.sources));
    } catch (const std::exception& error) {
        return foreman.Send({CrewMessage::kNoSession, reason(error)});
    }
    foreman.Send({CrewMessage::kReady, session->said()});
    while (const auto message = foreman.Receive()) {
        const Job job = ReadJob(message->bytes);
        try {
            Answer answer = RateBlock(*session, terms.forms, job.block, job.known,
                                      [&](std::uint32_t place) { foreman.Tell(place + 1); });
            foreman.Tell(0);
            if (job.packed) answer.bytes = Pack(terms.packing, answer.bytes);
            foreman.Send({CrewMessage::kRated, WriteAnswer(answer)});
        } catch (const std::exception& error) {
            return foreman.Send({CrewMessage::kBrokenRow, reason(error)});
        }
    }
}

struct Worker {
    std::unique_ptr<WorkerProcess> process;
    bool is_ready = false;
    std::deque<Task> tasks;  ///< The first is worked on.
    std::uint32_t step = 0;
    Clock::time_point since = Clock::now();  ///< When it told this step.
};

class CrewOfProcesses : public Crew {
 public:
    explicit CrewOfProcesses(const CrewTerms& terms) : terms_(terms), workers_(terms.jobs) {
        for (Worker& worker : workers_) Start(worker);
    }

    ~CrewOfProcesses() override {
        for (Worker& worker : workers_) {
            if (worker.process && worker.tasks.empty()) worker.process->Finish();
        }
    }

    bool HasRoom() const override {
        return waiting_.empty() && std::ranges::any_of(workers_, IsFree);
    }

    void Give(Block block) override {
        waiting_.push_back({{std::move(block), {}, true}, std::nullopt});
        HandOut();
    }

    std::optional<Answer> Take() override {
        constexpr std::chrono::milliseconds kLongest(100);
        if (answers_.empty()) {
            std::vector<WorkerProcess*> processes;
            for (Worker& worker : workers_) {
                processes.push_back(worker.process.get());
                // Time in which nobody looked, since the input was slow, say, does not count.
                worker.since += Clock::now() - looked_;
            }
            WorkerProcess::Await(processes, kLongest);
            for (Worker& worker : workers_) See(worker);
            looked_ = Clock::now();
            HandOut();
        }
        if (answers_.empty()) return std::nullopt;
        Answer answer = std::move(answers_.front());
        answers_.pop_front();
        return answer;
    }

    std::string said() const override { return said_; }

 private:
    static constexpr std::size_t kMostTasks = 2;  ///< One in work and one to go on with.

    static bool IsFree(const Worker& worker) {
        return worker.tasks.size() < kMostTasks &&
               (worker.tasks.empty() || !worker.tasks.front().alone);
    }

    /// Gives what waits to those who have least to do.
    void HandOut() {
        while (!waiting_.empty()) {
            const auto least = std::ranges::min_element(
                workers_, {}, [](const Worker& worker) { return worker.tasks.size(); });
            const auto free = IsFree(*least) ? least : std::ranges::find_if(workers_, IsFree);
            if (free == workers_.end()) return;
            Assign(*free, std::move(waiting_.front()));
            waiting_.pop_front();
        }
    }

    void Start(Worker& worker) {
        worker.process =
            std::make_unique<WorkerProcess>([this](Foreman& foreman) { Work(terms_, foreman); });
        worker.is_ready = false;
        worker.step = 0;
        worker.since = Clock::now();
    }

    void Assign(Worker& worker, Task task) {
        worker.process->Send({CrewMessage::kRate, WriteJob(task.JobAtHand())});
        if (worker.tasks.empty()) worker.since = Clock::now();
        worker.tasks.push_back(std::move(task));
    }

    /// Receives what a worker has sent, and sees to it that it lives.
    void See(Worker& worker) {
        while (auto message = worker.process->Receive()) {
            switch (message->kind) {
                case CrewMessage::kReady:
                    worker.is_ready = is_loaded_ = true;
                    worker.since = Clock::now();
                    terms_.when_loaded();
                    if (said_.empty()) said_ = message->bytes;
                    break;
                case CrewMessage::kNoSession:
                    throw Broken(message->bytes);
                case CrewMessage::kBrokenRow:
                    return Replace(worker, message->bytes);
                default:
                    Note(worker, ReadAnswer(message->bytes));
            }
        }
        if (worker.process->has_ended()) {
            const std::string end = worker.process->End();
            Replace(worker, "a partner library has ended the process, by " + end);
        } else if (IsLate(worker)) {
            worker.process->End();
            const std::string reason =
                fmt::format("no answer in {} seconds", LimitOf(worker).count());
            if (!worker.is_ready) throw Broken(reason + ", at its start");
            Replace(worker, reason);
        }
    }

    std::chrono::seconds LimitOf(const Worker& worker) const {
        constexpr std::chrono::seconds kForStart(60);
        return worker.is_ready ? terms_.timeout : std::max(terms_.timeout, kForStart);
    }

    bool IsLate(Worker& worker) const {
        if (worker.is_ready && worker.tasks.empty()) return false;
        if (const std::uint32_t step = worker.process->step(); step != worker.step) {
            worker.step = step;
            worker.since = Clock::now();
        }
        return Clock::now() - worker.since > LimitOf(worker);
    }

    void Note(Worker& worker, Answer answer) {
        is_answered_ = true;
        blameless_ends_ = 0;
        worker.since = Clock::now();
        Task task = std::move(worker.tasks.front());
        worker.tasks.pop_front();
        if (!task.alone) return answers_.push_back(std::move(answer));
        task.job.known[*task.alone] = std::move(answer);
        task.alone.reset();
        Assign(worker, std::move(task));
    }

    /// Starts a new process in the place of one that is lost, or is not to be relied on.
    void Replace(Worker& worker, const std::string& reason) {
        if (!worker.is_ready && !is_loaded_) throw Broken(reason + ", at its start");
        const std::uint32_t step = worker.process->step();
        Start(worker);
        std::deque<Task> tasks = std::exchange(worker.tasks, {});
        Blame(tasks.empty() ? nullptr : &tasks.front(), step, reason);
        if (tasks.empty()) return;
        Assign(worker, std::move(tasks.front()));
        // A row that is tried is alone in the process until it is answered.
        std::move(tasks.rbegin(), std::prev(tasks.rend()), std::front_inserter(waiting_));
    }

    /// The row that was worked on is tried alone; one that was alone has failed.
    void Blame(Task* task, std::uint32_t step, const std::string& reason) {
        constexpr std::size_t kMostInVain = 16;
        if (task != nullptr && step > 0 && task->alone) {
            const std::uint32_t place = *task->alone;
            auto& known = task->job.known;
            known[place] = FailRow(terms_.forms, task->RowText(place),
                                   task->job.block.first_row + place, reason);
            task->alone.reset();
            if (!is_answered_ && known.size() >= kMostInVain) {
                throw Broken(
                    fmt::format("{} rows failed and none was answered: {}", known.size(), reason));
            }
        } else if (task != nullptr && step > 0) {
            if (step > task->job.known.size() + 1) is_answered_ = true;
            task->alone = step - 1;
        } else if (++blameless_ends_ > kMostInVain) {
            throw Broken(reason + ", again and again, at its start or between two rows");
        }
    }

    CrewTerms terms_;
    std::vector<Worker> workers_;
    std::deque<Task> waiting_;
    std::deque<Answer> answers_;
    std::string said_;
    bool is_loaded_ = false;          ///< Some worker has had a session.
    bool is_answered_ = false;        ///< Some row was rated or refused.
    std::size_t blameless_ends_ = 0;  ///< Of workers that worked on no row, since the last answer.
    Clock::time_point looked_ = Clock::now();
};

}  // namespace

std::unique_ptr<Crew> MakeCrew(const CrewTerms& terms) {
    return std::make_unique<CrewOfProcesses>(terms);
}

}  // namespace cwt
