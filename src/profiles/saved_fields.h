// The DEF fields that a profile saves.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstddef>

namespace hundredweight {

struct SavedField {
    std::size_t profile_at;  ///< In ProfileRecord.
    std::size_t def_at;      ///< In the DEF record.
    std::size_t size;
};

#define HWT_SAVED(field, def_at) \
    { offsetof(ProfileRecord, field), def_at, sizeof(ProfileRecord::field) }

/// The surcharge, which a profile restores by a rule of its own.
inline constexpr SavedField kSavedSurcharge[] = {
    HWT_SAVED(SavedSurchargeOn, 12),
    HWT_SAVED(SavedFactorLow, 41),
    HWT_SAVED(SavedFactorHigh, 256),
};

inline constexpr SavedField kSavedSettings[] = {
    HWT_SAVED(SavedDef179, 179), HWT_SAVED(SavedDef172, 172), HWT_SAVED(SavedDef181, 181),
    HWT_SAVED(SavedDef159, 159), HWT_SAVED(SavedDef150, 150), HWT_SAVED(SavedDef170, 170),
    HWT_SAVED(SavedDef161, 161), HWT_SAVED(SavedDef31, 31),
};

#undef HWT_SAVED

}  // namespace hundredweight
