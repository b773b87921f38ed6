#include "profiles/profile_conversion.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "frame/block.h"
#include "frame/bounds.h"
#include "frame/failure.h"
#include "frame/text.h"
#include "platform/replace_file.h"
#include "profiles/profile_directory.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotPrepare = 121;
constexpr std::string_view kMarker = "ZSA";
constexpr std::string_view kMarkerFile = "PROFILE.ZSA";
constexpr std::string_view kTemporaryFile = "PROFILE.TMP";

/// A state record has blanks where a range begins.
bool IsStateRecord(const ZipDiscountRecord& record, std::size_t zip_length) {
    return WholeField(record.OrigLow).substr(0, zip_length).find_first_not_of(' ') ==
           std::string_view::npos;
}

/// A profile without any ZIP range stays as it is.
void MoveLeadingStatesBack(ProfileRecord& profile, std::size_t zip_length) {
    ZipDiscountRecord* const first = profile.ZipDiscounts;
    ZipDiscountRecord* const last =
        first + BoundedCount(profile.ZipDiscountCount, std::size(profile.ZipDiscounts));
    ZipDiscountRecord* const first_range = std::find_if_not(
        first, last,
        [&](const ZipDiscountRecord& record) { return IsStateRecord(record, zip_length); });
    std::rotate(first, first_range, last);
}

/// All profiles of a file.
struct Profiles {
    Block<ProfileRecord> records;  ///< Null when one cannot be read in full.
    int32_t count = 0;

    std::size_t size() const { return static_cast<std::size_t>(count) * kProfileSize; }
};

Profiles ReadProfiles(const PathText& path) {
    Profiles profiles;
    const OpenFile file = OpenForUpdate(path);
    if (!file) return profiles;
    profiles.count = CountProfiles(file);
    profiles.records = AllocateBlock<ProfileRecord>(profiles.size());
    if (profiles.records && platform::ReadBytes(file.handle(), profiles.records.get(),
                                                profiles.size()) < profiles.size()) {
        profiles.records.reset();
    }
    return profiles;
}

bool ConvertProfiles(const RateContext& context, const PathText& path) {
    const PathText temporary = ProfilePath(context, kTemporaryFile);
    const Profiles profiles = ReadProfiles(path);
    if (temporary.empty() || !profiles.records) return false;
    const std::size_t zip_length = context.ZipLength[0] == '3' ? 3 : 5;
    for (int32_t i = 0; i < profiles.count; ++i) {
        MoveLeadingStatesBack(profiles.records.get()[i], zip_length);
    }
    return platform::ReplaceFileThrough(temporary.c_str(), path.c_str(), profiles.records.get(),
                                        profiles.size()) == platform::WriteOutcome::kWritten;
}

}  // namespace

int32_t ConvertProfileFile(RateContext& context) {
    const PathText marker = ProfilePath(context, kMarkerFile);
    if (OpenForUpdate(marker)) return 1;
    if (!ConvertProfiles(context, ProfilePath(context, kProfileFile))) {
        return Fail(context, kCannotPrepare);
    }
    context.ProfileFileCurrent = 'Y';
    const platform::WriteOutcome marked =
        platform::ReplaceFile(marker.c_str(), kMarker.data(), kMarker.size());
    return marked == platform::WriteOutcome::kWritten ? 1 : 0;
}

}  // namespace hundredweight
