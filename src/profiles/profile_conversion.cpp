#include "profiles/profile_conversion.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "frame/bounds.h"
#include "frame/failure.h"
#include "frame/text.h"
#include "platform/replace_file.h"
#include "profiles/profile_directory.h"
#include "tariff/whole_file.h"

namespace hundredweight {
namespace {

constexpr std::string_view kMarker = "ZSA";
constexpr std::string_view kMarkerFile = "PROFILE.ZSA";
constexpr std::string_view kWorkingFile = "PROFILE.TMP";

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

/// The whole profile file; it is closed before it is replaced.
WholeFile ReadProfiles(const PathText& path) {
    const OpenFile file = OpenForUpdate(path);
    return file ? ReadWholeFile(file) : WholeFile{};
}

bool ConvertProfiles(const RateContext& context, const platform::DirectoryTurn& turn,
                     const PathText& path) {
    const WholeFile file = ReadProfiles(path);
    if (file.outcome != LoadOutcome::kLoaded) return false;
    auto* const profiles = reinterpret_cast<ProfileRecord*>(file.block.get());
    const int32_t count = file.length / kProfileSize;
    const std::size_t zip_length = context.ZipLength[0] == '3' ? 3 : 5;
    for (int32_t i = 0; i < count; ++i) MoveLeadingStatesBack(profiles[i], zip_length);
    platform::Replacement converted(turn, path.c_str(), kWorkingFile);
    return converted.Write(profiles, static_cast<std::size_t>(count) * kProfileSize) ==
               platform::WriteOutcome::kWritten &&
           converted.TakeName();
}

}  // namespace

int32_t ConvertProfileFile(RateContext& context) {
    const PathText marker = ProfilePath(context, kMarkerFile);
    if (OpenForReading(marker)) return 1;
    const PathText path = ProfilePath(context, kProfileFile);
    const platform::DirectoryTurn turn(path.c_str());
    // Another process may have converted the file meanwhile.
    if (turn && OpenForReading(marker)) return 1;
    if (!ConvertProfiles(context, turn, path)) return Fail(context, kCannotPrepare);
    context.ProfileFileCurrent = 'Y';
    const platform::WriteOutcome marked =
        platform::ReplaceFile(turn, marker.c_str(), kMarker.data(), kMarker.size());
    return marked == platform::WriteOutcome::kWritten ? 1 : 0;
}

}  // namespace hundredweight
