#include "session/tariff_set.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include "session/messages.h"
#include "tariffs/families/family.h"
#include "text/field_text.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr int32_t kNoDefaults = 240;   // The set has no DEF file, which only the user writes.
constexpr int32_t kNoDiscounts = 250;  // The set has no DIS file.
constexpr int32_t kAllColumns = 9;

template <std::size_t Size>
void SetName(char (&field)[Size], const char* what, const std::string& name) {
    if (SetBytes(field, name)) return;
    throw Broken(fmt::format("{}: {} is longer than {} characters", what, name, Size - 1));
}

}  // namespace

TariffSet::TariffSet(const Sources& sources)
    : sources_(sources), context_(std::make_unique<RateContext>()) {
    constexpr std::size_t kLongestBaseName = 8;
    const std::string directory = PathText(sources.data / "");
    SetName(context_->DataDir, "data directory", directory);
    SetName(context_->UserDir, "data directory", directory);
    char base_name[kLongestBaseName + 1] = "";
    SetName(base_name, "--set", sources.set);
    SetName(context_->FileBase, "--set", base_name);
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

int32_t TariffSet::LoadTerms() {
    if (OpenLevelFile(context_.get(), (sources_.set + ".LVL").c_str()) == 0) {
        return context_->ErrorCode;
    }
    if (TextOf(context_->LevelFileDate).size() != sizeof context_->LevelFileDate) {
        throw Broken(fmt::format("{}: the level file has no date", PathText(sources_.data)));
    }
    if (ReadDiscFile(context_.get()) == 1) return 0;
    if (context_->ErrorCode != kNoDiscounts) return context_->ErrorCode;
    // A set without discount columns of its own has its discounts by the tariff's weight breaks.
    context_->DiscBreakCount = kAllColumns;
    return 0;
}

void TariffSet::RequireSound(const std::vector<SetFile>& files, int32_t failure) const {
    for (const SetFile& file : files) {
        if (file.need != Need::kNotRead && !file.path.empty()) RequireReadable(file.path);
    }
    if (const auto discounts = DiscountsElsewhere(sources_); !discounts.empty()) {
        RequireReadable(discounts);
        RequireRecord(discounts, FamilyOf("DIS")->record_size);
    }
    if (failure != 0) return;
    for (const SetFile& file : files) file.RequireWhole();
}

std::filesystem::path TariffSet::DiscountsElsewhere(const Sources& sources) {
    std::error_code error;
    const std::filesystem::path current = std::filesystem::current_path(error);
    if (error || equivalent(current, sources.data, error)) return {};
    const std::string name = sources.set + ".DIS";
    try {
        return Listing(current).Find(name);
    } catch (const Broken&) {
        // In a directory that may not be listed the library finds the exact name alone.
        return exists(current / name, error) ? current / name : std::filesystem::path();
    }
}

}  // namespace cwt
