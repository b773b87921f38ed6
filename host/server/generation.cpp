#include "server/generation.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "batch/data_watch.h"
#include "platform/system.h"
#include "server/service_messages.h"
#include "session/inspection.h"
#include "session/messages.h"
#include "session/profile_list.h"
#include "session/tariff_set.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

constexpr std::chrono::seconds kStill(1);
constexpr std::chrono::seconds kForInspection(60), kForLook(60);

/// Has profiles of an earlier layout put into today's, which would be a change later.
void ConvertProfiles(const Sources& sources) {
    TariffSet set(sources);
    try {
        ProfileNames(set.context());
    } catch (const Broken&) {
        // Who rates by a profile is told.
    }
}

/// Knows what the data were, and looks at them when it is told to.
void Keep(const Sources& sources, bool patient, Foreman& foreman) {
    IgnoreWishes();
    try {
        ConvertProfiles(sources);
        std::optional<DataWatch> data(std::in_place, sources, false);
        while (patient) {
            std::this_thread::sleep_for(kStill);
            patient = !data->Change().empty();
            if (patient) data.emplace(sources, false);
        }
        foreman.Send({ServiceMessage::kReady, {}});
        while (foreman.Receive()) {
            const std::string change = data->Change();
            foreman.Send(
                {change.empty() ? ServiceMessage::kUnchanged : ServiceMessage::kChanged, change});
        }
    } catch (const std::exception& error) {
        foreman.Send({ServiceMessage::kBroken, error.what()});
    }
}

void InspectOnce(const Sources& sources, Foreman& foreman) {
    IgnoreWishes();
    foreman.Send({ServiceMessage::kReply, DocumentOf(Inspect(sources, {}))});
}

}  // namespace

Generation::Generation(std::uint64_t number, const Sources& sources, const PoolTerms& terms,
                       bool patient)
    : number_(number), sources_(sources), pool_(sources, terms) {
    try {
        keeper_ = std::make_unique<WorkerProcess>(
            [&](Foreman& foreman) { Keep(sources_, patient, foreman); });
    } catch (const std::system_error& error) {
        change_ = error.what();
        Fail(change_);
    }
}

void Generation::AddTo(std::vector<WorkerProcess*>& processes) const {
    for (const auto* process : {&keeper_, &inspector_}) {
        if (*process) processes.push_back(process->get());
    }
    pool_.AddTo(processes);
}

void Generation::See() {
    if (keeper_) SeeKeeper();
    if (inspector_) SeeInspector();
    if (phase_ == Phase::kLoading || phase_ == Phase::kServing) pool_.See();
    if (phase_ == Phase::kLoading && !pool_.failure().empty()) Fail(pool_.failure());
    if (keeper_ && !is_looking_ && Clock::now() >= next_look_) Look();
}

void Generation::SeeKeeper() {
    while (const auto message = keeper_->Receive()) {
        is_looking_ = false;
        switch (message->kind) {
            case ServiceMessage::kReady:
                Load();
                break;
            case ServiceMessage::kUnchanged:
                change_.clear();
                pool_.Confirm();
                if (phase_ == Phase::kLoading) phase_ = Phase::kServing;
                break;
            case ServiceMessage::kChanged:
                change_ = message->bytes;
                next_look_ = Clock::now() + kStill;
                if (phase_ == Phase::kLoading) Fail(change_ + " while the set was loaded");
                break;
            default:
                change_ = message->bytes;
        }
    }
    const bool is_late = is_looking_ && Clock::now() - looked_at_ > kForLook;
    if (!keeper_->has_ended() && !is_late) return;
    keeper_.reset();
    if (change_.empty()) change_ = "the process that looks at the data does not answer";
    if (phase_ != Phase::kServing) Fail(change_);
}

void Generation::SeeInspector() {
    const auto message = inspector_->Receive();
    if (message) set_ = message->bytes;
    if (message || inspector_->has_ended() || Clock::now() - since_ > kForInspection) {
        inspector_.reset();
    }
}

void Generation::Load() {
    phase_ = Phase::kLoading;
    since_ = Clock::now();
    try {
        inspector_ = std::make_unique<WorkerProcess>(
            [this](Foreman& foreman) { InspectOnce(sources_, foreman); });
    } catch (const std::system_error& error) {
        return Fail(error.what());
    }
    pool_.Start();
}

/// Has the data looked at when something waits for that.
void Generation::Look() {
    const bool is_loaded = phase_ == Phase::kLoading && !inspector_ && pool_.IsLoaded();
    const bool is_wanted = std::exchange(is_look_wanted_, false) && phase_ != Phase::kLoading;
    if (!is_loaded && !is_wanted && phase_ != Phase::kServing) return;
    const bool pool_wants = phase_ != Phase::kFailed && pool_.WantsLook();
    if (!is_wanted && !pool_wants) return;
    is_looking_ = true;
    looked_at_ = Clock::now();
    keeper_->Send({ServiceMessage::kLook, {}});
}

void Generation::Fail(const std::string& reason) {
    phase_ = Phase::kFailed;
    failure_ = reason;
    inspector_.reset();
    pool_.End();
}

}  // namespace cwt
