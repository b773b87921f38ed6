// What is doubtful in a set that can be built: it works, and hardly as it was meant.
#pragma once

#include <span>

#include "tariffs/checks/checked_set.h"

namespace cwt {

/// Warns of all of it. `built` are the files that the folder tells.
void CheckSet(const Files& built, FolderReader& folder);

/// Adds the doubts of one kind.
using SetCheck = void (*)(CheckedSet& set);

extern const std::span<const SetCheck> kRangeChecks;     ///< Postal codes, points and tariffs.
extern const std::span<const SetCheck> kMinimumChecks;   ///< Minimum charges by postal code.
extern const std::span<const SetCheck> kClassChecks;     ///< Classes and weight breaks.
extern const std::span<const SetCheck> kDiscountChecks;  ///< Discounts of the set and of profiles.
extern const std::span<const SetCheck> kZipDiscountChecks;
extern const std::span<const SetCheck> kSettingChecks;
extern const std::span<const SetCheck> kProfileChecks;

}  // namespace cwt
