// The files of one record: what a tariff set is, its user's defaults, its labels and discounts.
#include "tariffs/families/family.h"

namespace cwt {
namespace {

using enum Kind;

// clang-format off
constexpr Field kSetFields[] = {
    {"mark", 0, 4, kText, "What the host begins the record with."},
    {"version", 4, 5, kText, "The digits among these characters are the version of the layout: with 22 and more a BSE file has a header of 1144 bytes, before that of 1044.", true},
    {"host_bytes_9", 9, 154, kText, "The host's."},
    {"zip_digits", 163, 5, kText, "How many characters of a postal code count: 3 or 5; 6 counts 5.", true},
    {"label_files", 168, 1, kFlag, "yes: LAB, LAM and ADJ are read, without an engine."},
    {"host_bytes_169", 169, 5, kText, "The host's."},
    {"mexico_zip_file", 174, 1, kFlag, "no: no ZP7 file is read with the Mexican part."},
    {"host_bytes_175", 175, 22, kText, "The host's."},
    {"accessorial_file", 197, 1, kFlag, "yes: the ACC file is read."},
    {"host_byte_198", 198, 1, kText, "The host's."},
    {"no_base_tables", 199, 1, kFlag, "yes: FAC, BSE, ZF1, LA, RBA, MC and MCA are not read."},
    {"host_byte_200", 200, 1, kText, "The host's."},
    {"option_3", 201, 1, kFlag, "For the host."},
    {"host_byte_202", 202, 1, kText, "The host's."},
    {"second_minimum_file", 203, 1, kFlag, "yes: the LCA or MCA table is read, without an engine."},
    {"host_byte_204", 204, 1, kText, "The host's."},
    {"option_5", 205, 1, kFlag, "For the host."},
    {"host_byte_206", 206, 1, kText, "The host's."},
    {"skip_zip_tables", 207, 1, kFlag, "yes: ZP6, ZF2, BSC and FCC are not read, and postal codes that begin with a letter are refused; an SCC file makes it no."},
    {"host_byte_208", 208, 1, kText, "The host's."},
    {"no_base_rate_file", 209, 1, kFlag, "yes: the BSE file is not read; otherwise it is, without an engine and with base tables."},
    {"host_byte_210", 210, 1, kText, "The host's."},
    {"option_8", 211, 1, kFlag, "For the host."},
    {"host_byte_212", 212, 1, kText, "The host's."},
    {"option_9", 213, 1, kFlag, "For the host."},
    {"host_byte_214", 214, 1, kText, "The host's."},
    {"tariff_source", 215, 1, kText, "2: one effective table for all shipments; N: states come from the set's own tables alone."},
    {"host_bytes_216", 216, 18, kText, "The host's."},
    {"surcharge_on_gross", 234, 1, kFlag, "yes: the surcharge is a share of the gross charge; otherwise of the gross charge less the discount."},
    {"host_bytes_235", 235, 20, kText, "The host's."},
    {"service_guide_code", 255, 4, kText, "Sent to the service guide."},
    {"host_byte_259", 259, 1, kText, "The host's."},
    {"service_guide_kind", 260, 1, kText, "1 sends A to the service guide, all others B."},
    {"host_bytes_261", 261, 9, kText, "The host's."},
    {"no_flat_discount", 270, 1, kFlag, "yes: flat discount percentages count as 0."},
    {"host_bytes_271", 271, 12, kText, "The host's."},
};

constexpr Field kDefFields[] = {
    {"host_bytes_0", 0, 6, kText, "The host's.", false, 1, '\0'},
    {"entered_discount_1", 6, 2, kInt, "Not 0: the last profile takes entered discounts. The library writes it."},
    {"entered_discount_2", 8, 2, kInt, "The same."},
    {"conversion", 10, 2, kInt, "Not 0: the rate factor is multiplied by the conversion rate."},
    {"surcharge", 12, 2, kInt, "Not 0: a surcharge is computed."},
    {"host_bytes_14", 14, 2, kText, "The host's.", false, 1, '\0'},
    {"discount", 16, 2, kInt, "Not 0: discounts apply."},
    {"host_bytes_18", 18, 13, kText, "The host's.", false, 1, '\0'},
    {"discount_character", 31, 1, kText, "Sent to the engine with the discounts."},
    {"host_byte_32", 32, 1, kText, "The host's.", false, 1, '\0'},
    {"discount_file_mark", 33, 1, kText, "M: the last profile takes the discount file's groups. The library writes it."},
    {"host_byte_34", 34, 1, kText, "The host's.", false, 1, '\0'},
    {"conversion_rate", 35, 4, kFloat, "Currency conversion rate."},
    {"host_bytes_39", 39, 2, kText, "The host's.", false, 1, '\0'},
    {"surcharge_percent_low", 41, 4, kFloat, "Surcharge below the surcharge's weight break, percent."},
    {"rate_factor", 45, 4, kFloat, "Factor on all rates, above 0.00005 and below 9.99995; 0 and 1 mean none."},
    {"host_bytes_49", 49, 101, kText, "The host's.", false, 1, '\0'},
    {"saved_bytes_150", 150, 7, kText, "A setting of the host that profiles save.", false, 1, '\0'},
    {"host_bytes_157", 157, 2, kText, "The host's.", false, 1, '\0'},
    {"saved_number_159", 159, 2, kInt, "A setting of the host that profiles save."},
    {"saved_bytes_161", 161, 7, kText, "A setting of the host that profiles save.", false, 1, '\0'},
    {"host_bytes_168", 168, 2, kText, "The host's.", false, 1, '\0'},
    {"saved_number_170", 170, 2, kInt, "A setting of the host that profiles save."},
    {"saved_bytes_172", 172, 5, kText, "A setting of the host that profiles save.", false, 1, '\0'},
    {"host_bytes_177", 177, 2, kText, "The host's.", false, 1, '\0'},
    {"saved_number_179", 179, 2, kInt, "A setting of the host that profiles save."},
    {"saved_bytes_181", 181, 5, kText, "A setting of the host that profiles save.", false, 1, '\0'},
    {"host_bytes_186", 186, 66, kText, "The host's.", false, 1, '\0'},
    {"entered_discount_3", 252, 2, kInt, "As entered_discount_1."},
    {"zip_discounts", 254, 2, kInt, "Not 0: the profile's discounts by postal codes apply. Profiles write it."},
    {"surcharge_percent_high", 256, 4, kFloat, "Surcharge from the surcharge's weight break on, percent."},
    {"layout", 260, 2, kInt, "1. With 0, the earlier layout, the library puts surcharge_percent_low in the place of surcharge_percent_high as it reads it, and 6 in that of the first character of surcharge_break.", true},
    {"surcharge_break", 262, 4, kText, "Index of the surcharge's weight break, from 0."},
    {"profile_number", 266, 2, kInt, "Record number of the profile in use, from 0. The library writes it."},
    {"breaks_in_use", 268, 4, kText, "Weight breaks from surcharge_break on that stay in use; nothing: all.", false, 1, '\0'},
    {"profile_file_mark", 272, 1, kText, "Y: the profile file is known to have the present layout. Without it and PROFILE.ZSA its first use moves discounts between states that lead a profile's behind those of postal codes."},
    {"host_bytes_273", 273, 75, kText, "The host's.", false, 1, '\0'},
};

constexpr Field kMetFields[] = {{"host_bytes", 0, 283, kText, "The host's."}};
constexpr Field kMefFields[] = {{"host_bytes", 0, 350, kText, "The host's."}};

constexpr Field kBsvFields[] = {
    {"host_byte_0", 0, 1, kText, "The host's."},
    {"label_1", 1, 14, kText, "Name of the tariff, for bills. A * at its fourteenth character is read as a blank."},
    {"host_byte_15", 15, 1, kText, "The host's."},
    {"label_2", 16, 14, kText, "As label_1."},
    {"host_byte_30", 30, 1, kText, "The host's."},
    {"label_3", 31, 14, kText, "As label_1."},
    {"host_byte_45", 45, 1, kText, "The host's."},
    {"label_4", 46, 14, kText, "As label_1."},
    {"host_bytes_60", 60, 8, kText, "The host's."},
    {"second_labels_off", 68, 1, kText, "Anything but a blank: no ZPS file is looked for."},
    {"host_bytes_69", 69, 6, kText, "The host's."},
};

constexpr Field kZpsFields[] = {
    {"host_byte_0", 0, 1, kText, "The host's."},
    {"label_1", 1, 9, kText, "Replaces the first label; one that begins with PARTNER is read as PARTNERSHIP."},
    {"host_byte_10", 10, 1, kText, "The host's."},
    {"label_2", 11, 9, kText, "Replaces the second label likewise. The third and fourth are then empty."},
    {"host_bytes_20", 20, 608, kText, "The host's."},
};

constexpr Field kDisFields[] = {
    {"method", 0, 2, kInt, "For the host; a profile that takes these groups makes it 2."},
    {"host_bytes_2", 2, 86, kText, "The host's."},
    {"group_selector", 88, 1, kText, "How a shipment chooses its group. 1: always group 1. 2: group 1 for direct service (code D) at both points, else 2. 3: group 1 within one state, else 2. 4: groups 1 and 2 for direct service within one state and across, else 3 and 4. 5: groups 3 and 1, else 4 and 2. Others: always group 1.", true},
    {"host_bytes_89", 89, 23, kText, "The host's."},
};

constexpr Field kDiscountWeightFields[] = {
    {"mark", 0, 1, kText, "Any character: the column is there. The first that is not ends them."},
    {"host_bytes", 1, 10, kText, "The host's."},
    {"lowest_pounds", 11, 14, kText, "Lowest weight of the column, pounds. Percentages go by the column's number: they hold in the tariff's own break of that number, wherever it begins."},
};

constexpr Field kDiscountGroupFields[] = {
    {"percent", 0, 6, kRight, "Discount of each weight column, percent, below 100.", false, 9},
    {"flat_percent", 54, 6, kRight, "Flat discount, percent, below 100."},
    {"floor_dollars", 60, 7, kRight, "Minimum charge, dollars, below 1000."},
};

constexpr Field kBscFields[] = {
    {"host_bytes_0", 0, 16, kText, "The host's."},
    {"host_bytes_16", 16, 30, kText, "The host's."},
    {"host_bytes_46", 46, 50, kText, "The host's."},
};

constexpr Field kFacFields[] = {{"host_bytes", 0, 802, kText, "The host's."}};
constexpr Field kFccFields[] = {{"host_bytes", 0, 1352, kText, "The host's."}};

constexpr Field kBseFields[] = {
    {"host_bytes_0", 0, 32, kText, "The host's."},
    {"body_offset", 32, 4, kInt, "Where the body begins in the file, bytes from its start."},
    {"body_length", 36, 4, kInt, "Bytes of the body, at most 336."},
};
// clang-format on

constexpr Inner kDisInner[] = {
    {"discount-weights.csv", "weight_column", 112, 25, 9, kDiscountWeightFields},
    {"discount-groups.csv", "group", 337, 67, 4, kDiscountGroupFields},
};

// clang-format off
constexpr Family kSettingsFamilyList[] = {
    {"SET", Shape::kSettings, "settings", 283, kSetFields, "settings of the set"},
    {"DEF", Shape::kSettings, "defaults", 348, kDefFields, "the user's defaults", 0, '\0'},
    {"MET", Shape::kSettings, "mexico_settings", 283, kMetFields, "settings of the Mexican part"},
    {"MEF", Shape::kSettings, "mexico_defaults", 350, kMefFields, "the user's defaults of the Mexican part"},
    {"BSV", Shape::kSettings, "labels", 75, kBsvFields, "labels of the tariff"},
    {"ZPS", Shape::kSettings, "second_labels", 628, kZpsFields, "labels that replace the first"},
    {"DIS", Shape::kSettings, "discounts", 605, kDisFields, "discounts of the set", 0, ' ', kDisInner},
    {"BSE", Shape::kSettings, "base_rates", 40, kBseFields, "base rates: the start of their header", 0, ' ', {}, true},
    {"BSC", Shape::kSettings, "base_rate_blocks", 96, kBscFields, "blocks of base rates"},
    {"FAC", Shape::kSettings, "factors", 802, kFacFields, "factors"},
    {"FCC", Shape::kSettings, "second_factors", 1352, kFccFields, "factors, second record"},
};
// clang-format on

}  // namespace

constinit const std::span<const Family> kSettingsFamilies(kSettingsFamilyList);

}  // namespace cwt
