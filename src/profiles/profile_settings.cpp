// A profile taking effect: its settings, and its ZIP table.
#include <hundredweight/exports.h>

#include <cstring>

#include "discounts/discount_records.h"
#include "frame/failure.h"
#include "frame/numbers.h"
#include "frame/text.h"
#include "profiles/saved_fields.h"
#include "tariff/record_fields.h"
#include "tariff/whole_file.h"

using namespace hundredweight;

namespace {

constexpr int16_t kProfileGroups = 2;  // DisMethod when a profile's discount groups are used.
constexpr std::size_t kValuesInSet = 11;

/// The saved surcharge wins over its alternative, which wins over the defaults.
void RestoreSurcharge(RateContext& context) {
    const ProfileRecord& profile = context.Profile;
    if (profile.SavedSurchargeOn != 0) {
        context.SurchargeOn = profile.SavedSurchargeOn;
        context.DefFactorLow = profile.SavedFactorLow;
        context.DefFactorHigh = profile.SavedFactorHigh;
    } else if (profile.AltSurchargeOn != 0) {
        context.SurchargeOn = profile.AltSurchargeOn;
        context.DefFactorLow = profile.AltFactorLow;
        context.DefFactorHigh = profile.AltFactorHigh;
    }
}

void RestoreSettings(RateContext& context) {
    for (const SavedField& field : kSavedSettings) {
        std::memcpy(context.DefRecord + field.def_at,
                    reinterpret_cast<const char*>(&context.Profile) + field.profile_at, field.size);
    }
}

void RestoreModes(RateContext& context) {
    const ProfileRecord& profile = context.Profile;
    context.DefModeP1 = profile.DiscModeP;
    context.DefModeP2 = profile.DiscModeP;
    context.DefModeP3 = profile.DiscModeP;
    if (profile.DiscModeC != 0) context.DisMethod = kProfileGroups;
    context.DefModeCFlag = profile.DiscModeC != 0 ? 'M' : 'N';
    context.DefModeZ = profile.DiscModeZ;
}

/// Lays a set of the profile's values into a group, as the texts that discounts are read from.
void PutGroup(RateContext& context, int32_t group, const ProfileRecord& profile,
              std::size_t first_value) {
    const auto text = [&](std::size_t value, int width) {
        return FormatDecimal(static_cast<double>(profile.DiscountValues[first_value + value]),
                             width, 2);
    };
    DiscountGroup record = GroupAt(context, group);
    for (std::size_t i = 0; i < kWeightColumns; ++i) PutText(record.Percent[i], text(i, 5));
    PutText(record.FlatPercent, text(9, 5));
    PutText(record.Floor, text(10, 6));
    std::memcpy(context.DisColumns[group], &record, sizeof record);
}

void SwitchDiscounts(RateContext& context) {
    const ProfileRecord& profile = context.Profile;
    const bool on = profile.DiscModeP != 0 || profile.DiscModeC != 0 || profile.DiscModeZ != 0;
    context.ProfileTurnedOff = !on && context.DiscountOn != 0 ? 1 : 0;
    context.DiscountOn = on ? 1 : 0;
}

/// Loads the ZIP table that bears the profile's name.
int32_t ReadOwnZipTable(RateContext& context) {
    const PathText name =
        PathText(TerminatedText(context.Profile.ProfileName)).Append(kZp6Table.extension);
    const OpenFile file = FindInDataDir(context, name);
    return file ? ReadTableFrom(context, kZp6Table, file) : Fail(context, kZp6Table.open_code);
}

}  // namespace

void HWT_CALL LoadProfileSettings(RateContext* context) {
    RestoreSurcharge(*context);
    RestoreSettings(*context);
    RestoreModes(*context);
    PutGroup(*context, 0, context->Profile, 0);
    PutGroup(*context, 1, context->Profile, kValuesInSet);
    std::memset(context->DisColumns[2], 0, sizeof context->DisColumns[2]);
    std::memset(context->DisColumns[3], 0, sizeof context->DisColumns[3]);
    SwitchDiscounts(*context);
}

int32_t HWT_CALL LoadProfileZP6(RateContext* context) {
    if (context->SkipZipTablesFlag == 'Y') return 1;
    FreeBlockField(*context, HWT_FIELD(Zp6Table));
    context->Zp6Count = 0;
    const bool own_table = context->Profile.DiscModeZ != 0 && context->DiscountOn != 0;
    if (own_table && ReadOwnZipTable(*context) == 1) return 1;
    return ReadTable(*context, kZp6Table);
}
