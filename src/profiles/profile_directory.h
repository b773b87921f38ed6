// Where a user's profiles are kept.
#pragma once

#include <hundredweight/rate_context.h>

#include "tariff/data_file.h"

namespace hundredweight {

inline constexpr std::string_view kProfileFile = "PROFILE.FIL";
inline constexpr int32_t kProfileSize = sizeof(ProfileRecord);

/// A name in the profile directory: UserDir, or DataDir when ProfilesInDataDir is 'Y'. Empty when
/// the path does not fit.
PathText ProfilePath(const RateContext& context, std::string_view file_name);

/// Opens an existing file for reading and writing.
OpenFile OpenForUpdate(const PathText& path);

/// Whole profiles of a file; a partial one at its end does not count.
inline int32_t CountProfiles(const OpenFile& file) {
    return static_cast<int32_t>(file.length() / kProfileSize);
}

}  // namespace hundredweight
