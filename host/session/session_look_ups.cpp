// What a session tells besides bills.
#include <hundredweight/exports.h>

#include "session/engine_answers.h"
#include "session/messages.h"
#include "session/point_tables.h"
#include "session/profile_list.h"
#include "session/session.h"
#include "shipment/spelling.h"
#include "text/code_page.h"
#include "text/field_text.h"
#include "text/nearest_word.h"

namespace cwt {
namespace {

constexpr std::size_t kMostLanes = 20;
constexpr const char* kNoCity = "None of the above";
constexpr const char* kNoCityState = "**";

/// The names of the tariffs that the engine told of at its start.
std::vector<std::string> TariffNames(const RateContext& context) {
    std::vector<std::string> names;
    for (int32_t i = 0; context.EfcTable != nullptr && i < context.EfcCount; ++i) {
        const EfcRecord record = context.EfcTable[i];
        if (std::string name = TextOf(record.TariffName, sizeof record.TariffName); !name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

}  // namespace

StateAnswer Session::StateOf(const std::string& postal_code) {
    Restore();
    const std::optional<std::string> bytes = ToCodePage(postal_code);
    if (!bytes || !SetBytes(context_->OrigZip, *bytes) || VerOrigZip(context_) == 0) {
        return {"", {{"", "this is no postal code", 0, postal_code, PostalCodeForms()}}};
    }
    return FindState(*context_, "", postal_code);
}

CitiesAnswer Session::CitiesAt(const std::string& postal_code) {
    if (Refusals refusals = StateOf(postal_code).refusals; !refusals.empty()) {
        return {{}, std::move(refusals)};
    }
    const std::vector<Lane> lanes =
        LanesAt(postal_code, Files().Table("CBS"), Files().Table("CMT"), kMostLanes);
    for (const Lane& lane : lanes) {
        const TablesAnswer tables = TablesOf(lane.tariff);
        if (tables.classes.empty()) continue;
        Shipment shipment;
        shipment.origin.zip = shipment.destination.zip = lane.other;
        Point& point = lane.is_from ? shipment.origin : shipment.destination;
        point.zip = postal_code;
        point.city = kNoCity;
        point.state = kNoCityState;
        shipment.lines = {{tables.classes.front(), 1}};
        shipment.tariff = lane.tariff;
        Rate(shipment, 0);
        if (context_->EngineListCount > 0) return {OfferedCities(*context_), {}};
    }
    return {};
}

TablesAnswer Session::TablesOf(const std::optional<std::string>& tariff) {
    Restore();
    RateContext& context = *context_;
    const std::vector<std::string> names = TariffNames(context);
    TablesAnswer answer;
    answer.tariff = tariff ? *tariff : names.empty() ? std::string() : names.front();
    const std::optional<std::string> bytes = ToCodePage(answer.tariff);
    const bool fits = bytes && SetBytes(context.TariffName, *bytes);
    const bool asks = fits && IsAskedByName(context);
    TakeMessageBoxes();
    SetClassesAndWeights(&context, kEngineTables, 0);
    const std::vector<std::string> shown = TakeMessageBoxes();
    if ((tariff && !asks) || !shown.empty()) {
        const std::string reason = asks ? shown.back() : "the engine has no tariff of this name";
        answer.refusals = {{"tariff", reason, 0, answer.tariff,
                            NearestWord(answer.tariff, std::vector<std::string_view>(
                                                           names.begin(), names.end()))}};
        return answer;
    }
    answer.breaks = WeightBreaksOf(context);
    answer.classes = ClassesOf(context);
    if (answer.classes.empty() || answer.classes.front() != kAllKinds) return answer;
    AdmitStandardClasses(context);
    for (std::string& name : ClassesOf(context)) answer.classes.push_back(std::move(name));
    return answer;
}

const std::vector<std::string>& Session::ProfileNames() {
    Restore();
    profile_names_.clear();
    if (FindFile(sources_.data, "PROFILE.FIL").empty()) return profile_names_;
    OpenProfiles();
    profile_names_ = cwt::ProfileNames(*context_);
    return profile_names_;
}

Refusals Session::LoadProfile(const std::string& name) {
    const std::vector<std::string>& names = ProfileNames();
    if (!names.empty() && cwt::LoadProfile(*context_, name)) return {};
    return {UnknownProfile(names, name)};
}

void Session::Prepare() {
    const auto attempt = [](auto prepare) {
        try {
            prepare();
        } catch (const Broken&) {
            // The shipment that needs it is told.
        }
    };
    attempt([this] { ProfileNames(); });
    attempt([this] { StartServiceGuide(); });
    Restore();
}

}  // namespace cwt
