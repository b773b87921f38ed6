#include "session/rating_session.h"

#include <fmt/core.h>
#include <fmt/ranges.h>
#include <hundredweight/exports.h>
#include <hundredweight/platform.h>

#include "session/failure.h"
#include "session/validation.h"
#include "text/field_text.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr int32_t kRated = 0;
constexpr int32_t kNoDefaults = 240;   // The set has no DEF file, which only the user writes.
constexpr int32_t kNoDiscounts = 250;  // The set has no DIS file.
constexpr int32_t kOutOfScope = 103;
constexpr int32_t kNoPointCode = 501;
constexpr int32_t kStandardTables = 0;
constexpr int32_t kEngineTables = 1;
constexpr int32_t kSettleList = 0;

/// Throws Broken, naming where the data are, when a step of the library failed.
void Expect(int32_t result, const Sources& sources, const RateContext& context) {
    if (result != 0) return;
    throw Broken(fmt::format("{}: {}", PathText(sources.data), Describe(context.ErrorCode)));
}

/// The engine's offers for a point that it could not place.
std::string Alternatives(const RateContext& context) {
    std::vector<std::string> offers;
    for (int32_t i = 0; i < context.EngineListCount; ++i) {
        const EngineAlternative offer = context.EngineList[i];
        offers.push_back(fmt::format("{} {}", TextOf(offer.Text), TextOf(offer.Code)));
    }
    return fmt::format("The city does not lie at its postal code; the engine offers: {}",
                       fmt::join(offers, ", "));
}

/// A set without discount columns of its own has its discounts by the tariff's weight breaks.
void ReadDiscounts(const Sources& sources, RateContext& context) {
    if (ReadDiscFile(&context) == 1) return;
    if (context.ErrorCode != kNoDiscounts) Expect(0, sources, context);
    context.DiscBreakCount = 9;
}

}  // namespace

std::filesystem::path FindDataDirectory(const std::filesystem::path& start,
                                        const std::string& set) {
    for (std::filesystem::path directory = start;; directory = directory.parent_path()) {
        if (std::filesystem::exists(directory / (set + ".SET"))) return directory;
        if (directory == directory.parent_path()) return start;
    }
}

TariffSet::TariffSet(const Sources& sources) : context_(std::make_unique<RateContext>()) {
    constexpr std::size_t kLongestBaseName = 8;
    const std::string directory = PathText(sources.data / "");
    SetText(context_->DataDir, "data directory", directory);
    SetText(context_->UserDir, "data directory", directory);
    RequireRoom("set", sources.set, kLongestBaseName);
    SetText(context_->FileBase, "set", sources.set);
    context_->UseEngine = 1;
}

TariffSet::~TariffSet() {
    CloseAllFiles(context_.get());
}

int32_t TariffSet::Load() {
    if (ReadDefFile(context_.get()) == 0 && context_->ErrorCode != kNoDefaults) {
        return context_->ErrorCode;
    }
    int32_t found = 0;
    return OpenAllFiles(context_.get(), &found) == 1 ? 0 : context_->ErrorCode;
}

PartnerLibrary::PartnerLibrary(const std::string& name)
    : module_(LoadPartnerLibrary(name.c_str())) {
    if (module_ == nullptr) {
        throw Broken(fmt::format("{} cannot be loaded: {}", name, PartnerLibraryError()));
    }
}

PartnerLibrary::~PartnerLibrary() {
    UnloadPartnerLibrary(module_);
}

RatingSession::RatingSession(const Sources& sources)
    : sources_(sources), set_(sources), engine_(sources.engine) {
    if (const int32_t code = set_.Load(); code != 0) {
        throw Broken(fmt::format("{}: {}", PathText(sources.data), Describe(code)));
    }
    Expect(OpenLevelFile(&context(), (sources.set + ".LVL").c_str()), sources, context());
    ReadDiscounts(sources, context());
    context().EngineModule = engine_.module();
    if (GetTolvexAddresses(&context(), 0) == 0 || InitializeTolvexdll(&context()) == 0) {
        throw Broken(fmt::format("{} is not a base-rate engine: {}", sources.engine,
                                 Describe(context().ErrorCode)));
    }
}

RatingSession::~RatingSession() {
    if (service_guide_) EndSGdll(&context());
    EndTolvexdll(&context());
}

void RatingSession::ApplyProfile(const std::string& name) {
    SetText(context().Profile.ProfileName, "profile", name);
    const bool applied = ReadProfileFile(&context()) && GetProfileRecord(&context()) == 1;
    if (!applied) throw Refused("profile " + name + ": " + Describe(context().ErrorCode));
    LoadProfileSettings(&context());
    Expect(LoadProfileZP6(&context()), sources_, context());
}

/// Finds the shipment's tariff, and the classes and weight breaks that lines are checked against.
void RatingSession::LayOutTariff(const Shipment& shipment) {
    if (shipment.tariff) {
        SetText(context().TariffName, "tariff", *shipment.tariff);
        // A tariff that is named is not looked up.
        context().NameTablesLoaded = 'N';
    } else if (context().NameTablesLoaded != 'Y') {
        throw Refused("The shipment names no tariff, and the set has no tables of tariff names");
    } else if (GetTolvexBse(&context()) == 0) {
        throw Refused(Describe(kNoPointCode));
    } else if (GetTolvexTariffName(&context()) == 0) {
        throw Refused(Describe(kOutOfScope));
    }
    SetClassesAndWeights(&context(), kEngineTables, 0);
    // A tariff of freight of all kinds rates every standard class.
    if (TextOf(context().ClassTable[0]) == "FAK") {
        SetClassesAndWeights(&context(), kStandardTables, 0);
    }
}

void RatingSession::AskServiceGuide() {
    service_guide_.emplace(sources_.service_guide);
    context().ServiceGuideModule = service_guide_->module();
    context().UseServiceGuide = 1;
    if (GetSGAddresses(&context(), 0) == 0) {
        throw Broken(fmt::format("{} is not a service guide: {}", sources_.service_guide,
                                 Describe(context().ErrorCode)));
    }
    if (InitializeSGdll(&context()) == 0) throw Broken("The service guide does not start");
    if (GetService(&context()) == 0 || GetTerminals(&context()) == 0) {
        throw Refused(Describe(context().ErrorCode));
    }
}

void RatingSession::Check(const Shipment& shipment) {
    if (shipment.profile) ApplyProfile(*shipment.profile);
    EnterShipment(shipment, context());
    std::vector<std::string> complaints = ValidatePoints(shipment, context());
    if (complaints.empty() || shipment.tariff) {
        LayOutTariff(shipment);
        const std::vector<std::string> about_lines = ValidateLines(shipment, context());
        complaints.insert(complaints.end(), about_lines.begin(), about_lines.end());
    }
    if (!complaints.empty()) throw Refused(std::move(complaints));
}

std::vector<std::string> RatingSession::Rate(const Shipment& shipment, int request_code) {
    Check(shipment);
    if (shipment.service_guide) AskServiceGuide();
    LoadDiscounts(&context(), nullptr, kSettleList);
    context().ErrorCode = 0;
    // Each shipment is rated on its own: no minimum is left over from another one.
    context().ZmcMinimum = 0;
    const int32_t result = RateShipment(&context(), request_code, 0);
    std::vector<std::string> shown = TakeMessageBoxes();
    if (result != kRated) {
        const int32_t code = context().ErrorCode;
        throw Refused(shown.empty() ? Describe(code)
                                    : fmt::format("{} (code {})", shown.back(), code));
    }
    if (context().EngineListCount > 0) throw Refused(Alternatives(context()));
    return shown;
}

}  // namespace cwt
