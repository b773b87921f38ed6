#include "profiles/default_profile.h"

#include <cstring>
#include <iterator>

#include "frame/text.h"
#include "profiles/saved_fields.h"
#include "tariff/standard_tables.h"

namespace hundredweight {
namespace {

void Save(RateContext& context, const SavedField& field) {
    std::memcpy(reinterpret_cast<char*>(&context.Profile) + field.profile_at,
                context.DefRecord + field.def_at, field.size);
}

}  // namespace

void SetDefaultProfile(RateContext& context) {
    ProfileRecord& profile = context.Profile;
    context.ProfileIndex = 0;
    std::memset(&profile, 0, sizeof profile);
    CopyText(profile.ProfileName, "Default");
    for (std::size_t i = 0; i < std::size(profile.ClassMap); ++i) {
        if (context.UseEngine != 0) {
            CopyText(profile.ClassMap[i], StandardClassList[i]);
        } else {
            CopyText(profile.ClassMap[i], WholeField(context.ClassTable[i]));
        }
    }
    for (const SavedField& field : kSavedSurcharge) Save(context, field);
    for (const SavedField& field : kSavedSettings) Save(context, field);
    context.ProfileFileCurrent = 'Y';
}

}  // namespace hundredweight
