#include "session/session.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <cstdlib>
#include <utility>

#include "platform/system.h"
#include "session/engine_answers.h"
#include "session/explained.h"
#include "session/messages.h"
#include "session/notes.h"
#include "session/profile_list.h"
#include "session/rated_shipment.h"
#include "session/set_files.h"
#include "session/shipment_entry.h"
#include "shipment/spelling.h"
#include "text/code_page.h"
#include "text/field_text.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr int32_t kRated = 0;
constexpr int32_t kOutOfScope = 103;
constexpr int32_t kEngineFailed = 133;
constexpr int32_t kNoOwnZipTable = 436;
constexpr int32_t kNoPointCode = 501;
constexpr std::size_t kZipRecord = 12;  // Bytes of a ZIP table's record.
constexpr int32_t kSettleList = 0;

/// A point that the engine could not place.
Refusal CityUnknown(const RateContext& context) {
    return {"", "The city does not lie at its postal code", 0, "", OfferedCities(context)};
}

}  // namespace

Session::Session(const Sources& sources)
    : sources_(sources),
      set_(sources),
      engine_(sources.engine),
      context_(&set_.context()),
      zip_tables_(sources.data, ".ZP6") {
    int32_t code = set_.Load();
    const std::vector<SetFile> files = set_.Files();
    set_.RequireSound(files, code);
    if (code == 0) code = set_.LoadTerms();
    if (code != 0) {
        const std::string extension = FileOfCode(code, files);
        const std::string name = extension.empty() ? "" : sources_.set + "." + extension;
        throw Broken(fmt::format("{}: {}", PathText(sources_.data / name), Describe(code)));
    }
    discounts_elsewhere_ = TariffSet::DiscountsElsewhere(sources_);
    StartEngine();
    loaded_ = std::make_unique<RateContext>(*context_);
    if (!said_.empty()) RequireWorkingEngine();
}

Session::~Session() {
    Restore();
}

void Session::EndEngine::operator()(RateContext* context) const {
    EndTolvexdll(context);
}

void Session::EndGuide::operator()(RateContext* context) const {
    context->UseServiceGuide = 1;
    EndSGdll(context);
}

/// Stops the run over what a partner or the data are at fault for, in the partner's words too.
void Session::Break(const std::string& what, int32_t code) const {
    const std::string reason = fmt::format("{}: {}", what, Describe(code));
    throw Broken(said_.empty() ? reason : fmt::format("{}; {}", said_, reason));
}

void Session::StartEngine() {
    context_->EngineModule = engine_.module();
    context_->ErrorCode = 0;
    const ErrorOutput output;
    engine_run_.reset(context_);
    const bool started = GetTolvexAddresses(context_, 0) == 1 && InitializeTolvexdll(context_) == 1;
    said_ = output.Text();
    if (!started) Break(sources_.engine, context_->ErrorCode);
}

void Session::StartServiceGuide() {
    context_->UseServiceGuide = 1;
    if (guide_run_) return;
    service_guide_.emplace(sources_.service_guide);
    context_->ServiceGuideModule = loaded_->ServiceGuideModule = service_guide_->module();
    context_->ErrorCode = 0;
    const ErrorOutput output;
    const bool bound = GetSGAddresses(context_, 0) == 1;
    if (bound && InitializeSGdll(context_) == 1) {
        guide_run_.reset(context_);
        return;
    }
    const std::string said = output.Text();
    if (!bound) throw Broken(sources_.service_guide + ": " + Describe(context_->ErrorCode));
    throw Broken(said.empty() ? sources_.service_guide + " does not start" : said);
}

void Session::RequireWorkingEngine() {
    Restore();
    context_->NameTablesLoaded = 'N';
    const int32_t result = RateShipment(context_, 0, 0);
    TakeMessageBoxes();
    const int32_t code = context_->ErrorCode;
    Restore();
    if (result != kRated && code == kEngineFailed) Break(sources_.engine, code);
}

/// Every shipment starts from the record as the load left it.
void Session::Restore() {
    // The table of an earlier shipment's profile; that of the set stands aside meanwhile.
    if (context_->Zp6Table != loaded_->Zp6Table) std::free(context_->Zp6Table);
    *context_ = *loaded_;
    notes_.clear();
    if (!discounts_elsewhere_.empty()) {
        notes_.push_back("the discounts are those of " + PathText(discounts_elsewhere_));
    }
}

/// Profiles are read whole, once in each state that their file is in.
void Session::OpenProfiles() {
    const std::string mark = ChangeMark(sources_.data / "PROFILE.FIL");
    if (mark.empty() || mark != profiles_mark_) {
        RequireProfiles(sources_.data);
        profile_names_.clear();
    }
    profiles_mark_ = mark;
    if (!ReadProfileFile(context_)) Break(PathText(sources_.data), context_->ErrorCode);
}

Refusals Session::ApplyProfile(const std::string& name) {
    RateContext& context = *context_;
    OpenProfiles();
    if (!cwt::LoadProfile(context, name)) {
        if (profile_names_.empty()) profile_names_ = cwt::ProfileNames(context);
        return {UnknownProfile(profile_names_, name)};
    }
    LoadProfileSettings(&context);
    if (context.Profile.DiscModeZ != 0 && context.DiscountOn != 0) {
        const auto table = zip_tables_.Find(name + ".ZP6");
        if (!table.empty()) {
            RequireReadable(table);
            RequireWholeRecords(table, kZipRecord);
        }
    }
    // The set's table is kept for the shipments to come.
    if (context.SkipZipTablesFlag != 'Y') context.Zp6Table = nullptr;
    context.ErrorCode = 0;
    if (LoadProfileZP6(&context) == 0) Break(PathText(sources_.data), context.ErrorCode);
    if (context.ErrorCode == kNoOwnZipTable) {
        notes_.push_back(fmt::format("The profile {} has no ZIP table of its own", name));
    }
    return {};
}

/// Finds the shipment's tariff, and the classes and weight breaks that lines are checked against.
/// Where the engine gives none, the engine is to say why when it rates.
Refusals Session::LayOutTariff(const Shipment& shipment) {
    RateContext& context = *context_;
    if (shipment.tariff) {
        // A tariff that is named is not looked up.
        context.NameTablesLoaded = 'N';
    } else if (context.NameTablesLoaded != 'Y') {
        return {{"tariff", "missing: the set has no tables of tariff names"}};
    } else if (GetTolvexBse(&context) == 0) {
        return {RefusalOf("origin and destination", kNoPointCode)};
    } else if (GetTolvexTariffName(&context) == 0) {
        return {RefusalOf("origin and destination", kOutOfScope)};
    }
    TakeMessageBoxes();
    SetClassesAndWeights(&context, kEngineTables, 0);
    if (!TakeMessageBoxes().empty()) return {};
    AdmitStandardClasses(context);
    return CheckLines(shipment, context);
}

Refusals Session::Check(const Shipment& shipment) {
    RateContext& context = *context_;
    Refusals refusals = shipment.profile ? ApplyProfile(*shipment.profile) : Refusals();
    const auto add = [&](Refusals more) {
        refusals.insert(refusals.end(), more.begin(), more.end());
    };
    add(EnterShipment(shipment, context));
    if (!refusals.empty()) return refusals;
    add(CheckFactor(shipment, context));
    Refusals about_points = CheckPoints(shipment, context);
    const bool points_hold = about_points.empty();
    add(std::move(about_points));
    if (points_hold || shipment.tariff) add(LayOutTariff(shipment));
    return refusals;
}

Refusals Session::AskServiceGuide() {
    StartServiceGuide();
    if (GetService(context_) == 1 && GetTerminals(context_) == 1) return {};
    return {RefusalOf("service_guide", context_->ErrorCode)};
}

Outcome Session::Rate(const Shipment& shipment, int request_code) {
    Restore();
    RateContext& context = *context_;
    Refusals refusals = Check(shipment);
    if (refusals.empty() && shipment.service_guide) refusals = AskServiceGuide();
    if (!refusals.empty()) return refusals;
    LoadDiscounts(&context, nullptr, kSettleList);
    refusals = CheckDiscounts(shipment, context);
    if (!refusals.empty()) return refusals;
    for (std::string& note : NotesOn(shipment, context)) notes_.push_back(std::move(note));
    context.ErrorCode = 0;
    // No minimum is left over from before the load.
    context.ZmcMinimum = 0;
    TakeMessageBoxes();
    const int32_t result = RateShipment(&context, request_code, 0);
    std::vector<std::string> shown = TakeMessageBoxes();
    const int32_t code = context.ErrorCode;
    if (result != kRated) {
        if (code == kEngineFailed) Break(sources_.engine, code);
        if (shown.empty()) return Refusals{RefusalOf("", code)};
        return Refusals{{"", shown.back(), code}};
    }
    if (context.EngineListCount > 0) return Refusals{CityUnknown(context)};
    // The library blanks the points on a status, and an engine says what it means.
    if (context.OrigCity[0] == ' ') throw Broken(sources_.engine + ": a status without a message");
    shown.insert(shown.begin(), notes_.begin(), notes_.end());
    Bill bill = ReadBill(context, std::move(shown));
    bill.id = shipment.id;
    bill.description = shipment.description;
    refusals = CheckAmounts(bill);
    // A surcharge may be too high for its field; anything else is the engine's doing.
    if (!refusals.empty() && refusals.front().place != "surcharge") {
        throw Broken(sources_.engine + ": " + RefusalText(refusals.front()));
    }
    if (!refusals.empty()) return refusals;
    if (std::string note = GrossNote(bill); !note.empty()) bill.notes.push_back(std::move(note));
    return bill;
}

DataFiles& Session::Files() {
    if (!files_) files_.emplace(sources_, discounts_elsewhere_);
    return *files_;
}

ExplainedOutcome Session::Explain(const Shipment& shipment, int request_code) {
    Outcome outcome = Rate(shipment, request_code);
    if (auto* refusals = std::get_if<Refusals>(&outcome)) return std::move(*refusals);
    if (!looked_at_) looked_at_ = std::make_unique<RateContext>();
    ExplainedBill explained = {std::get<Bill>(std::move(outcome)), {}};
    explained.explanation =
        cwt::Explain(LookAt(shipment, *context_, explained.bill, Files(), *looked_at_));
    return explained;
}

}  // namespace cwt
