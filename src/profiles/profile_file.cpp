// The file of the user's profiles.
#include <hundredweight/exports.h>

#include <cstring>
#include <optional>

#include "frame/block.h"
#include "frame/failure.h"
#include "platform/replace_file.h"
#include "profiles/default_profile.h"
#include "profiles/profile_conversion.h"
#include "profiles/profile_directory.h"
#include "tariff/resident_file.h"

namespace hundredweight {
namespace {

constexpr int32_t kCannotOpen = 125;
constexpr int32_t kCannotRead = 126;
constexpr int32_t kNotFound = 127;

using ProfileName = char[sizeof(ProfileRecord::ProfileName)];

bool CannotPrepare(RateContext& context) {
    return Fail(context, kCannotPrepare) != 0;
}

enum class FirstFile { kThere, kMade, kFailed };

/// Makes the profile file of a user who has none: a copy of the set's, or one with the default
/// profile.
platform::WriteOutcome MakeFirstFile(RateContext& context, const platform::DirectoryTurn& turn,
                                     const PathText& path) {
    const PathText template_path = PathInDataDir(context, kProfileFile);
    if (platform::FileExists(template_path.c_str())) {
        return platform::CopyFileOnce(turn, template_path.c_str(), path.c_str());
    }
    SetDefaultProfile(context);
    return platform::CreateFileOnce(turn, path.c_str(), &context.Profile, kProfileSize);
}

/// Makes sure that there is a profile file, which another process may be making too.
FirstFile PrepareFirstFile(RateContext& context, const PathText& path) {
    if (path.empty()) return FirstFile::kFailed;
    const char was_current = context.ProfileFileCurrent;
    const platform::DirectoryTurn turn(path.c_str());
    // What is there is the user's, and is not touched.
    if (turn && !platform::FileExists(path.c_str()) &&
        MakeFirstFile(context, turn, path) == platform::WriteOutcome::kWritten) {
        return FirstFile::kMade;
    }
    // Of a file that somebody else has made, nothing is known.
    context.ProfileFileCurrent = was_current;
    return OpenForUpdate(path) ? FirstFile::kThere : FirstFile::kFailed;
}

OpenFile OpenProfileFile(const RateContext& context) {
    return OpenForUpdate(ProfilePath(context, kProfileFile));
}

/// Reads a part of a profile, from its head.
bool ReadProfile(const OpenFile& file, int32_t record_number, void* to, std::size_t size) {
    return platform::ReadBytesAt(file.handle(), int64_t{record_number} * kProfileSize, to, size) ==
           size;
}

/// The names of a file's profiles, in their order.
using ProfileNames = Block<ProfileName>;

/// The names in the file that was looked at last: one copy for the whole process.
ResidentFile<ProfileNames> resident_names;

std::optional<ProfileNames> ReadNames(const OpenFile& file) {
    const auto count = static_cast<std::size_t>(CountProfiles(file));
    if (count > kLargestCopy / sizeof(ProfileName)) return std::nullopt;
    ProfileNames names = AllocateBlock<ProfileName>(count * sizeof(ProfileName));
    if (!names) return std::nullopt;
    for (std::size_t record = 0; record < count; ++record) {
        ProfileName& name = names.get()[record];
        if (!ReadProfile(file, static_cast<int32_t>(record), name, sizeof name)) {
            return std::nullopt;
        }
    }
    return names;
}

bool HasName(const ProfileRecord& profile, const ProfileName& name) {
    return std::memcmp(profile.ProfileName, name, sizeof name) == 0;
}

/// Finds the first profile of a name by the copy of all names. Result: 0 or kNotFound; nothing when
/// there is no copy, or it has led to a profile of another name.
std::optional<int32_t> FindByNames(const OpenFile& file, const ProfileName& name,
                                   ProfileRecord& found, int32_t& record_number) {
    const ProfileNames* const names = resident_names.CopyOf(file, ReadNames);
    if (names == nullptr) return std::nullopt;
    const int32_t count = CountProfiles(file);
    for (record_number = 0; record_number < count; ++record_number) {
        if (std::memcmp(names->get()[record_number], name, sizeof name) != 0) continue;
        const bool led_there =
            ReadProfile(file, record_number, &found, sizeof found) && HasName(found, name);
        return led_there ? std::optional<int32_t>(0) : std::nullopt;
    }
    return kNotFound;
}

/// The same in the file, without a copy. Result: 0 or a code.
int32_t FindInFile(const OpenFile& file, const ProfileName& name, ProfileRecord& found,
                   int32_t& record_number) {
    const int32_t count = CountProfiles(file);
    for (record_number = 0; record_number < count; ++record_number) {
        ProfileName read;
        if (!ReadProfile(file, record_number, read, sizeof read)) return kCannotRead;
        if (std::memcmp(read, name, sizeof read) != 0) continue;
        return ReadProfile(file, record_number, &found, sizeof found) ? 0 : kCannotRead;
    }
    return kNotFound;
}

}  // namespace

PathText ProfilePath(const RateContext& context, std::string_view file_name) {
    return context.ProfilesInDataDir == 'Y' ? PathInDataDir(context, file_name)
                                            : PathInUserDir(context, file_name);
}

OpenFile OpenForUpdate(const PathText& path) {
    platform::FileState state;
    const int16_t handle =
        path.empty() ? int16_t{-1} : platform::OpenForUpdate(path.c_str(), &state);
    return OpenFile(handle, state);
}

}  // namespace hundredweight

using namespace hundredweight;

bool HWT_CALL ReadProfileFile(RateContext* context) {
    const PathText path = ProfilePath(*context, kProfileFile);
    const FirstFile first =
        OpenForUpdate(path) ? FirstFile::kThere : PrepareFirstFile(*context, path);
    if (first == FirstFile::kFailed) return CannotPrepare(*context);
    if (first == FirstFile::kMade) return true;
    if (context->ProfileFileCurrent == 'Y') return true;
    return ConvertProfileFile(*context) == 1 || CannotPrepare(*context);
}

int32_t HWT_CALL GetProfileRecord(RateContext* context) {
    const OpenFile file = OpenProfileFile(*context);
    if (!file) return Fail(*context, kCannotOpen);
    ProfileName name;
    std::memcpy(name, context->Profile.ProfileName, sizeof name);
    int32_t record_number = 0;
    ProfileRecord found;
    const std::optional<int32_t> by_names = FindByNames(file, name, found, record_number);
    const int32_t code = by_names ? *by_names : FindInFile(file, name, found, record_number);
    if (code != 0) return Fail(*context, code);
    context->Profile = found;
    context->ProfileIndex = static_cast<int16_t>(record_number);
    return 1;
}

int32_t HWT_CALL GetProfileKey(RateContext* context, int32_t record_number, char* name) {
    const OpenFile file = OpenProfileFile(*context);
    if (!file) return Fail(*context, kCannotOpen);
    ProfileName found;
    if (record_number < 0 || record_number >= CountProfiles(file) ||
        !ReadProfile(file, record_number, found, sizeof found)) {
        return Fail(*context, kCannotRead);
    }
    std::memcpy(name, found, sizeof found);
    return 1;
}

int32_t HWT_CALL GetProfileSize(RateContext* context) {
    const OpenFile file = OpenProfileFile(*context);
    if (!file) return Fail(*context, kCannotOpen);
    return CountProfiles(file);
}
