#include "tariffs/checks/set_checks.h"

namespace cwt {

void CheckSet(const Files& built, FolderReader& folder) {
    CheckedSet set(built, folder);
    for (const auto& checks : {kRangeChecks, kMinimumChecks, kClassChecks, kDiscountChecks,
                               kZipDiscountChecks, kSettingChecks, kProfileChecks}) {
        for (const SetCheck check : checks) check(set);
    }
    set.Tell();
}

}  // namespace cwt
