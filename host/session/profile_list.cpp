#include "session/profile_list.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "session/messages.h"
#include "session/sources.h"
#include "tariffs/families/family.h"
#include "tariffs/field_json.h"
#include "text/code_page.h"
#include "text/field_text.h"
#include "text/nearest_word.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

constexpr int32_t kNotFound = 127;

Broken NoProfiles(const RateContext& context) {
    return Broken(fmt::format("{}PROFILE.FIL: {}", context.UserDir, Describe(context.ErrorCode)));
}

}  // namespace

void RequireWholeProfiles(const std::filesystem::path& file) {
    RequireReadable(file);
    RequireWholeRecords(file, sizeof(ProfileRecord));
    if (file_size(file) == 0) throw Broken(PathText(file) + ": there are no profiles in it");
}

void RequireProfiles(const std::filesystem::path& directory) {
    const std::filesystem::path file = FindFile(directory, "PROFILE.FIL");
    if (file.empty()) throw Broken(PathText(directory) + ": there is no PROFILE.FIL");
    RequireWholeProfiles(file);
    RequireWritable(file);
}

std::vector<std::string> ProfileNames(RateContext& context) {
    context.ErrorCode = 0;
    const int32_t count = GetProfileSize(&context);
    if (context.ErrorCode != 0) throw NoProfiles(context);
    std::vector<std::string> names;
    for (int32_t i = 0; i < count; ++i) {
        char name[sizeof context.Profile.ProfileName];
        if (GetProfileKey(&context, i, name) == 0) throw NoProfiles(context);
        names.push_back(TextOf(name));
    }
    return names;
}

bool LoadProfile(RateContext& context, const std::string& name) {
    const std::optional<std::string> bytes = ToCodePage(name);
    if (!bytes || !SetBytes(context.Profile.ProfileName, *bytes)) return false;
    if (GetProfileRecord(&context) == 1) return true;
    if (context.ErrorCode != kNotFound) throw NoProfiles(context);
    return false;
}

Refusal UnknownProfile(const std::vector<std::string>& names, const std::string& name) {
    Refusal refusal = RefusalOf("profile", kNotFound);
    refusal.written = name;
    refusal.alternatives =
        NearestWord(name, std::vector<std::string_view>(names.begin(), names.end()));
    return refusal;
}

Json ProfileJson(const RateContext& context) {
    const Family& family = *FamilyOf("PROFILE.FIL");
    const std::string_view record(reinterpret_cast<const char*>(&context.Profile),
                                  family.record_size);
    Json profile = {{"schema", "hundredweight/profile/1"}};
    profile.update(ShownRecord(family.fields, record));
    const Inner& discounts = family.inner.front();
    const auto count = static_cast<std::size_t>(std::max(+context.Profile.ZipDiscountCount, 0));
    Json& records = profile["zip_discount_records"] = Json::array();
    for (std::size_t i = 0; i < std::min(count, discounts.count); ++i) {
        records.push_back(
            ShownRecord(discounts.fields, record.substr(discounts.offset + i * discounts.stride)));
    }
    return profile;
}

std::string ProfileText(const Json& profile) {
    std::string text;
    for (const auto& [name, value] : profile.items()) {
        text += fmt::format("{:<26}{}\n", name,
                            value.is_string() ? value.get<std::string>() : value.dump());
    }
    return text;
}

}  // namespace cwt
