#include "reference/samples/profile_file.h"

#include <hundredweight/profile_record.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>

#include "reference/samples/bytes.h"
#include "reference/samples/network.h"

namespace hundredweight::samples {
namespace {

template <std::size_t Size>
void Put(char (&field)[Size], std::string_view text) {
    text.copy(field, Size);
}

/// A profile that rates every class as itself.
std::unique_ptr<ProfileRecord> PlainProfile(std::string_view name) {
    auto profile = std::make_unique<ProfileRecord>();
    Put(profile->ProfileName, name);
    for (std::size_t i = 0; i < std::size(profile->ClassMap); ++i) {
        Put(profile->ClassMap[i], kClasses[i].class_code);
    }
    return profile;
}

/// What every kind of ZIP-range record has.
ZipDiscountRecord DiscountOf(std::string_view percent, std::string_view floor) {
    ZipDiscountRecord record;
    std::fill_n(reinterpret_cast<char*>(&record), sizeof record, ' ');
    for (auto& text : record.BreakPercent) Put(text, percent);
    Put(record.Floor, floor);
    return record;
}

/// Rates classes 125 to 85 as class 85, with discounts from New York to Georgia and within states.
std::unique_ptr<ProfileRecord> Northeast() {
    auto profile = PlainProfile("Northeast");
    profile->ClassMapOn = 1;
    for (const int mapped : {7, 8, 9, 10})
        Put(profile->ClassMap[mapped], std::string_view("85\0\0", 4));
    profile->DiscModeZ = 1;
    ZipDiscountRecord range = DiscountOf("   42.50", "  85.00");
    Put(range.OrigLow, "10000  ");
    Put(range.OrigHigh, "14999  ");
    Put(range.DestLow, "30000  ");
    Put(range.DestHigh, "31999  ");
    ZipDiscountRecord within_state = DiscountOf("   50.00", "  75.00");
    Put(within_state.OrigHigh, "NY");
    Put(within_state.DestHigh, "NY");
    profile->ZipDiscounts[0] = range;
    profile->ZipDiscounts[1] = within_state;
    profile->ZipDiscountCount = 2;
    return profile;
}

}  // namespace

FileContents ProfileFiles() {
    return {{"PROFILE.FIL", Bytes(*PlainProfile("Default")) + Bytes(*Northeast())}};
}

}  // namespace hundredweight::samples
