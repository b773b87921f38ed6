#include "session/profile_list.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "session/messages.h"
#include "session/sources.h"
#include "text/code_page.h"
#include "text/field_text.h"
#include "text/nearest_word.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kBreaks = 9;
constexpr std::size_t kValuesInSet = 11;
constexpr int32_t kMostZipDiscounts = 150;

constexpr int32_t kNotFound = 127;

Broken Failure(const RateContext& context) {
    return Broken(fmt::format("{}PROFILE.FIL: {}", context.UserDir, Describe(context.ErrorCode)));
}

Json ClassMap(const ProfileRecord& profile) {
    Json map = Json::array();
    for (const auto& rated_as : profile.ClassMap) map.push_back(TextOf(rated_as));
    return map;
}

/// One of the two sets of break percentages, flat percentage and floor.
Json DiscountSet(const ProfileRecord& profile, std::size_t set) {
    const auto value = [&](std::size_t i) {
        return +profile.DiscountValues[set * kValuesInSet + i];
    };
    Json breaks = Json::array();
    for (std::size_t i = 0; i < kBreaks; ++i) breaks.push_back(value(i));
    return {{"break_percent", breaks}, {"flat_percent", value(9)}, {"floor", value(10)}};
}

Json BreakPercents(const ZipDiscountRecord& record) {
    Json percents = Json::array();
    for (const auto& percent : record.BreakPercent) percents.push_back(TextOf(percent));
    return percents;
}

Json ZipDiscounts(const ProfileRecord& profile) {
    Json records = Json::array();
    const int32_t count = std::clamp(+profile.ZipDiscountCount, 0, kMostZipDiscounts);
    for (int32_t i = 0; i < count; ++i) {
        const ZipDiscountRecord& record = profile.ZipDiscounts[i];
        records.push_back({{"origin_from", TextOf(record.OrigLow)},
                           {"origin_to", TextOf(record.OrigHigh)},
                           {"destination_from", TextOf(record.DestLow)},
                           {"destination_to", TextOf(record.DestHigh)},
                           {"break_percent", BreakPercents(record)},
                           {"flat_percent", TextOf(record.FlatPercent)},
                           {"floor", TextOf(record.Floor)}});
    }
    return records;
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
    if (context.ErrorCode != 0) throw Failure(context);
    std::vector<std::string> names;
    for (int32_t i = 0; i < count; ++i) {
        char name[sizeof context.Profile.ProfileName];
        if (GetProfileKey(&context, i, name) == 0) throw Failure(context);
        names.push_back(TextOf(name));
    }
    return names;
}

bool LoadProfile(RateContext& context, const std::string& name) {
    const std::optional<std::string> bytes = ToCodePage(name);
    if (!bytes || !SetBytes(context.Profile.ProfileName, *bytes)) return false;
    if (GetProfileRecord(&context) == 1) return true;
    if (context.ErrorCode != kNotFound) throw Failure(context);
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
    const ProfileRecord& profile = context.Profile;
    return {{"schema", "hundredweight/profile/1"},
            {"name", TextOf(profile.ProfileName)},
            {"class_map_on", profile.ClassMapOn != 0},
            {"class_map", ClassMap(profile)},
            {"surcharge_on", profile.SavedSurchargeOn != 0},
            {"surcharge_low_percent", +profile.SavedFactorLow},
            {"surcharge_high_percent", +profile.SavedFactorHigh},
            {"entered_discounts", profile.DiscModeP != 0},
            {"discount_file_groups", profile.DiscModeC != 0},
            {"zip_range_discounts", profile.DiscModeZ != 0},
            {"discounts", Json::array({DiscountSet(profile, 0), DiscountSet(profile, 1)})},
            {"zip_ranges", ZipDiscounts(profile)}};
}

std::string ProfileText(const Json& profile) {
    std::string text;
    for (const auto& [name, value] : profile.items()) {
        text += fmt::format("{:<24}{}\n", name,
                            value.is_string() ? value.get<std::string>() : value.dump());
    }
    return text;
}

}  // namespace cwt
