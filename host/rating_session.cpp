#include "rating_session.h"

#include <fmt/core.h>
#include <fmt/ranges.h>
#include <hundredweight/exports.h>
#include <hundredweight/platform.h>

#include "failure.h"
#include "field_text.h"

namespace cwt {
namespace {

constexpr int32_t kRated = 0;
constexpr int32_t kNoDefaults = 240;  // The set has no DEF file, which only the user writes.

std::string DirectoryText(const std::filesystem::path& directory) {
    return (directory / "").string();
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

}  // namespace

std::filesystem::path FindDataDirectory(const std::filesystem::path& start,
                                        const std::string& set) {
    const std::filesystem::path absolute = std::filesystem::absolute(start).lexically_normal();
    for (std::filesystem::path directory = absolute;; directory = directory.parent_path()) {
        if (std::filesystem::exists(directory / (set + ".SET"))) return directory;
        if (directory == directory.parent_path()) return start;
    }
}

TariffSet::TariffSet(const Sources& sources) : context_(std::make_unique<RateContext>()) {
    const std::string directory = DirectoryText(sources.data);
    SetText(context_->DataDir, "data directory", directory);
    SetText(context_->UserDir, "data directory", directory);
    constexpr std::size_t kLongestBaseName = 8;
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

RatingSession::RatingSession(const Sources& sources) : set_(sources) {
    if (const int32_t code = set_.Load(); code != 0) {
        throw Broken(fmt::format("{}: {}", sources.data.string(), Describe(code)));
    }
    if (OpenLevelFile(&context(), (sources.set + ".LVL").c_str()) == 0) {
        throw Broken(fmt::format("{}: {}", sources.data.string(), Describe(context().ErrorCode)));
    }
    engine_module_ = LoadPartnerLibrary(sources.engine.c_str());
    if (engine_module_ == nullptr) {
        throw Broken(fmt::format("The engine cannot be loaded: {}", PartnerLibraryError()));
    }
    context().EngineModule = engine_module_;
    if (GetTolvexAddresses(&context(), 0) == 0 || InitializeTolvexdll(&context()) == 0) {
        UnloadPartnerLibrary(engine_module_);
        throw Broken(fmt::format("{}: not a base-rate engine: {}", sources.engine,
                                 Describe(context().ErrorCode)));
    }
}

RatingSession::~RatingSession() {
    EndTolvexdll(&context());
    UnloadPartnerLibrary(engine_module_);
}

std::vector<std::string> RatingSession::Rate(int request_code) {
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
