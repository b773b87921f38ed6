// The users' own files: profiles and option records.
#include "tariffs/families/family.h"

namespace cwt {
namespace {

using enum Kind;
using enum Shape;

// clang-format off
constexpr Field kProfileFields[] = {
    {"name", 0, 31, kText, "Name of the profile and its key, letter for letter.", true, 1, '\0'},
    {"class_map", 31, 4, kInt, "Not 0: each class is rated as class_1 to class_18 say."},
    {"class", 35, 4, kText, "What each of the set's first 18 classes is rated as.", false, 18, '\0'},
    {"surcharge", 107, 2, kInt, "Not 0: a surcharge is computed, by the percentages below. 0: the alternative below serves, if it is on; otherwise the defaults' surcharge stays."},
    {"surcharge_percent_low", 109, 4, kFloat, "Saved surcharge below its weight break, percent."},
    {"surcharge_percent_high", 113, 4, kFloat, "Saved surcharge from its weight break on, percent."},
    {"saved_number_179", 117, 2, kInt, "Saved setting of the host."},
    {"saved_bytes_172", 119, 5, kText, "Saved setting of the host.", false, 1, '\0'},
    {"saved_bytes_181", 124, 5, kText, "Saved setting of the host.", false, 1, '\0'},
    {"saved_number_159", 129, 2, kInt, "Saved setting of the host."},
    {"saved_bytes_150", 131, 7, kText, "Saved setting of the host.", false, 1, '\0'},
    {"saved_number_170", 138, 2, kInt, "Saved setting of the host."},
    {"saved_bytes_161", 140, 7, kText, "Saved setting of the host.", false, 1, '\0'},
    {"discount_character", 147, 1, kText, "Saved character that the engine is sent with discounts.", false, 1, '\0'},
    {"reserved_148", 148, 1, kText, "Nothing.", false, 1, '\0'},
    {"entered_discount", 149, 2, kInt, "Not 0: discounts that are entered for a shipment apply."},
    {"discount_file", 151, 2, kInt, "Not 0: the discount groups apply. A profile's own values below take the place of the first two, and the others are cleared, whatever this says."},
    {"zip_discounts", 153, 2, kInt, "Not 0: the profile's discounts by postal codes apply, and it has a ZIP table of its own."},
    {"group_1_percent", 155, 4, kFloat, "Discount by weight column, group 1, percent, below 100.", false, 9},
    {"group_1_flat_percent", 191, 4, kFloat, "Flat discount of group 1, percent, below 100."},
    {"group_1_floor_dollars", 195, 4, kFloat, "Minimum charge of group 1, dollars, below 1000."},
    {"group_2_percent", 199, 4, kFloat, "Discount by weight column, group 2, percent, below 100.", false, 9},
    {"group_2_flat_percent", 235, 4, kFloat, "Flat discount of group 2, percent, below 100."},
    {"group_2_floor_dollars", 239, 4, kFloat, "Minimum charge of group 2, dollars, below 1000."},
    {"zip_discount_count", 17793, 4, kInt, "How many of the discounts by postal codes are in use, 0 to 150."},
    {"alternative_surcharge", 17797, 2, kInt, "Surcharge that serves while surcharge is 0."},
    {"alternative_percent_low", 17799, 4, kFloat, "The alternative below its weight break, percent."},
    {"alternative_percent_high", 17803, 4, kFloat, "The alternative from its weight break on, percent."},
    {"reserved_17807", 17807, 90, kText, "Nothing.", false, 1, '\0'},
};

constexpr Field kZipDiscountFields[] = {
    {"origin_first", 0, 7, kPostal, "Lowest postal code of the origin; nothing: a discount between two states."},
    {"origin_last", 7, 7, kPostal, "Highest postal code of the origin, included; or its state."},
    {"destination_first", 14, 7, kPostal, "Lowest postal code of the destination."},
    {"destination_last", 21, 7, kPostal, "Highest postal code of the destination, included; or its state."},
    {"flat_percent", 28, 8, kRight, "Flat discount, percent."},
    {"percent", 36, 8, kRight, "Discount by weight break, percent. The first record that fits holds.", false, 9},
    {"floor_dollars", 108, 7, kRight, "Minimum charge, dollars."},
    {"host_bytes", 115, 2, kText, "The host's."},
};

constexpr Inner kProfileInner[] = {
    {"profile-zip-discounts.csv", "zip_discount", 243, 117, 150, kZipDiscountFields, "profile"},
};

constexpr Field kOptionFields[] = {
    {"layout", 0, 4, kInt, "1 in a record that was brought up to date."},
    {"name", 4, 25, kText, "Name of the record and its key.", true, 1, '\0'},
    {"byte_29", 29, 1, kText, "The host's.", false, 1, '\0'},
    {"block_30", 30, 175, kText, "The host's.", false, 1, '\0'},
    {"block_205", 205, 6, kText, "The host's.", false, 1, '\0'},
    {"reserved_211", 211, 1, kText, "Nothing.", false, 1, '\0'},
    {"text_212", 212, 260, kText, "The host's.", false, 1, '\0'},
    {"block_472", 472, 20, kText, "The host's.", false, 1, '\0'},
    {"number_492", 492, 4, kInt, "The host's."},
    {"byte_496", 496, 1, kText, "The host's.", false, 1, '\0'},
    {"byte_497", 497, 1, kText, "The host's.", false, 1, '\0'},
    {"block_498", 498, 474, kText, "The host's.", false, 1, '\0'},
    {"byte_972", 972, 1, kText, "The host's.", false, 1, '\0'},
    {"text_973", 973, 260, kText, "The host's.", false, 1, '\0'},
    {"number_1233", 1233, 2, kInt, "The host's."},
    {"block_1235", 1235, 176, kText, "The host's.", false, 1, '\0'},
    {"reserved_1411", 1411, 11, kText, "Nothing.", false, 1, '\0'},
    {"byte_1422", 1422, 1, kText, "The host's.", false, 1, '\0'},
    {"block_1423", 1423, 9, kText, "The host's.", false, 1, '\0'},
    {"reserved_1432", 1432, 365, kText, "Nothing.", false, 1, '\0'},
};

/// Five bytes less: the layout mark came later, and one more byte behind block_205.
constexpr Field kEarlierOptionFields[] = {
    {"name", 0, 25, kText, "Name of the record and its key.", true, 1, '\0'},
    {"byte_25", 25, 1, kText, "The host's.", false, 1, '\0'},
    {"block_26", 26, 175, kText, "The host's.", false, 1, '\0'},
    {"block_201", 201, 6, kText, "The host's.", false, 1, '\0'},
    {"text_207", 207, 260, kText, "The host's.", false, 1, '\0'},
    {"block_467", 467, 20, kText, "The host's.", false, 1, '\0'},
    {"number_487", 487, 4, kInt, "The host's."},
    {"byte_491", 491, 1, kText, "The host's.", false, 1, '\0'},
    {"byte_492", 492, 1, kText, "The host's.", false, 1, '\0'},
    {"block_493", 493, 474, kText, "The host's.", false, 1, '\0'},
    {"byte_967", 967, 1, kText, "The host's.", false, 1, '\0'},
    {"text_968", 968, 260, kText, "The host's.", false, 1, '\0'},
    {"number_1228", 1228, 2, kInt, "The host's."},
    {"block_1230", 1230, 176, kText, "The host's.", false, 1, '\0'},
    {"block_1406", 1406, 11, kText, "The host's; lost when the file is brought up to date.", false, 1, '\0'},
    {"byte_1417", 1417, 1, kText, "The host's.", false, 1, '\0'},
    {"block_1418", 1418, 9, kText, "The host's.", false, 1, '\0'},
    {"block_1427", 1427, 365, kText, "The host's; lost when the file is brought up to date.", false, 1, '\0'},
};

constexpr Family kProfileFamilyList[] = {
    {"PROFILE.FIL", kTable, "profiles.csv", 17897, kProfileFields, "the users' profiles", 0, '\0', kProfileInner},
    {"PROFILE.ZSA", kCarried, "", 0, {}, "mark of a profile file in the present layout"},
};
// clang-format on

}  // namespace

constinit const std::span<const Family> kProfileFamilies(kProfileFamilyList);

const Family kOptionFile = {"", kTable, "options/", 1797, kOptionFields, "option records", 0, '\0'};
const Family kEarlierOptionFile = {
    "", kTable, "options-earlier/", 1792, kEarlierOptionFields, "option records, earlier layout",
    0,  '\0'};

}  // namespace cwt
