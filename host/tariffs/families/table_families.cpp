// The tables of a tariff set: postal codes and points, minimum charges, classes, weight breaks,
// items.
#include "tariffs/families/family.h"

namespace cwt {
namespace {

using enum Kind;

// clang-format off
constexpr Field kScEntryFields[] = {
    {"state", 0, 2, kText, "State of the ZIP prefix of this number, two letters; XX: none; YY: not served."},
    {"attribute_a", 2, 1, kText, "Handed to the host with the state."},
    {"attribute_b", 3, 1, kText, "Handed to the host with the state."},
};

constexpr Field kSccFields[] = {
    {"state", 0, 2, kText, "State or province, two letters.", true},
    {"first", 2, 3, kCode, "Lowest prefix of postal codes, three characters.", true},
    {"last", 5, 3, kCode, "Highest prefix, included. Ranges ascend and do not overlap.", true},
};

constexpr Field kZp6Fields[] = {
    {"host_bytes", 0, 12, kText, "The host's: the library loads them, and reads none."},
};
constexpr Field kZp7Fields[] = {{"host_bytes", 0, 43, kText, "The host's."}};
constexpr Field kSzpFields[] = {{"host_bytes", 0, 5, kText, "The host's."}};

constexpr Field kCbsFields[] = {
    {"first", 0, 6, kPostal, "Lowest postal code of the range.", true},
    {"last", 6, 6, kPostal, "Highest postal code, included. Ranges ascend.", true},
    {"point_code", 12, 6, kText, "Base-rate point code.", true},
};

constexpr Field kCmtFields[] = {
    {"origin_point_code", 0, 6, kText, "Base-rate point code of the origin.", true},
    {"destination_point_code", 6, 6, kText, "That of the destination. Pairs ascend.", true},
    {"tariff", 12, 8, kText, "Name of the tariff between the two.", true},
};

constexpr Field kLaFields[] = {{"host_bytes", 0, 8, kText, "The host's."}};
constexpr Field kRbaFields[] = {{"host_bytes", 0, 16, kText, "The host's."}};
constexpr Field kDchFields[] = {{"host_bytes", 0, 25, kText, "The host's."}};

constexpr Field kLongMinimumFields[] = {
    {"a", 0, 4, kInt, "First number, for the host.", true},
    {"b", 4, 4, kInt, "Second number, for the host.", true},
    {"c", 8, 4, kInt, "Third number, for the host.", true},
};
constexpr Field kShortMinimumFields[] = {
    {"a", 0, 4, kInt, "First number, for the host.", true},
    {"b", 4, 4, kInt, "Second number, for the host.", true},
    {"c", 8, 2, kUnsigned, "Third number, for the host; read as 32 bits.", true},
};

constexpr Field kZmcFields[] = {
    {"direction", 0, 1, kText, "F: the first range is the origin's, the second the destination's. Anything else: either way."},
    {"first_low", 1, 5, kPostal, "Lowest postal code of the first range, five characters.", true},
    {"first_high", 6, 5, kPostal, "Highest postal code of the first range, included.", true},
    {"second_low", 11, 5, kPostal, "Lowest postal code of the second range.", true},
    {"second_high", 16, 5, kPostal, "Highest postal code of the second range.", true},
    {"rate_code_low", 21, 6, kCode, "Lowest rate code, six characters, as codes are compared: one that begins with a digit has its last character in front then, 100200 for the code 002001.", true},
    {"rate_code_high", 27, 6, kCode, "Highest rate code, included. The first record that fits holds.", true},
    {"minimum_dollars", 33, 4, kDollars, "Charges by weight break below it are raised to it, dollars; 0: none. The net charge has the engine's minimum.", true},
    {"floor_dollars", 37, 4, kCents, "Floor of the charges by weight break, dollars; 0: none.", true},
};

constexpr Field kClsFields[] = {
    {"class", 0, 5, kText, "Freight class, as the National Motor Freight Classification names them: 500 to 50, 77 for 77.5.", true},
};

constexpr Field kWgtFields[] = {
    {"label", 0, 5, kText, "Name of the weight break.", true},
    {"highest_pounds", 5, 8, kRight, "Highest weight of the break, pounds.", true},
    {"lowest_pounds", 13, 8, kRight, "Lowest weight of the break, pounds.", true},
};

constexpr Field kAccFields[] = {
    {"host_bytes_0", 0, 2, kText, "The host's."},
    {"item_code", 2, 3, kText, "Code of the accessorial item; the library notes where 232 and 218 stand.", true},
    {"description", 5, 118, kText, "The host's."},
};

constexpr Field kAdjFields[] = {
    {"key", 0, 3, kText, "Key of the adjustment.", true},
    {"host_bytes", 3, 344, kText, "The host's."},
};

constexpr Field kTblFields[] = {
    {"name", 0, 15, kText, "Name of the table.", true},
    {"host_bytes", 15, 3, kText, "The host's."},
};

constexpr Field kCozFields[] = {{"host_bytes", 0, 6, kText, "The host's."}};

constexpr Field kLvlFields[] = {
    {"host_bytes_0", 0, 8, kText, "The host's."},
    {"date", 8, 8, kDate, "In the first record the day of the tariff, which bills name and the engine is sent; in others the host's."},
    {"host_bytes_16", 16, 2, kText, "The host's."},
};

constexpr Field kWsmFields[] = {
    {"number", 0, 7, kText, "A number in seven digits, for the host, as are the numbers of 4 bytes behind it.", true},
};

constexpr Field kLamFields[] = {
    {"key", 0, 6, kText, "Key of the line, six characters.", true},
    {"value", 6, 3, kText, "Value of the line, three characters.", true},
};
constexpr Field kLabFields[] = {
    {"line", 0, 69, kText, "A line. Every twentieth ends a block, whose key is its characters 6 to 10; the last block has the key ZZZZZ.", true},
};

constexpr Field kIndexFields[] = {
    {"key", 0, 2, kUnsigned, "Key of the entry, for the host.", true},
    {"position", 0, 4, kInt, "A number, for the host; not read at a load.", true},
    {"entry", 0, 3, kText, "Entry, for the host."},
};
constexpr Field kWideIndexFields[] = {
    {"key", 0, 2, kUnsigned, "Key of the entry, for the host.", true},
    {"position", 0, 4, kInt, "A number, for the host; not read at a load.", true},
    {"entry", 0, 6, kText, "Entry, for the host."},
};

constexpr Inner kScInner[] = {
    {"states.csv", "zip_prefix", 0, 4, 999, kScEntryFields},
};

using enum Shape;

constexpr Family kTableFamilyList[] = {
    {"SC", kArray, "", 3996, {}, "states by ZIP prefix", 0, ' ', kScInner},
    {"SCC", kTable, "provinces.csv", 8, kSccFields, "states and provinces by postal-code prefix"},
    {"ZP6", kTable, "zip-table.csv", 12, kZp6Fields, "ZIP table"},
    {"ZP7", kTable, "mexico-zip-table.csv", 43, kZp7Fields, "ZIP table of the Mexican part"},
    {"SZP", kTable, "short-zips.csv", 5, kSzpFields, "short ZIP table"},
    {"ZF1", kIndexed, "zip-index-1.csv", 0, kIndexFields, "first ZIP index", 2800, ' ', {}, true},
    {"ZF2", kIndexed, "zip-index-2.csv", 0, kWideIndexFields, "second ZIP index", 2100, ' ', {}, true},
    {"ZFM", kIndexed, "mexico-zip-index.csv", 0, kIndexFields, "ZIP index of the Mexican part", 2800, ' ', {}, true},
    {"CBS", kTable, "point-codes.csv", 18, kCbsFields, "base-rate point codes by postal code"},
    {"CMT", kTable, "tariff-names.csv", 20, kCmtFields, "tariffs between two point codes"},
    {"LA", kTable, "la.csv", 8, kLaFields, "LA table"},
    {"RBA", kTable, "rba.csv", 16, kRbaFields, "RBA table"},
    {"LMC", kTable, "minimum-charges-long.csv", 12, kLongMinimumFields, "minimum charges, long form"},
    {"MC", kTable, "minimum-charges-short.csv", 10, kShortMinimumFields, "minimum charges, short form"},
    {"LCA", kTable, "second-minimums-long.csv", 12, kLongMinimumFields, "second minimum charges, long form"},
    {"MCA", kTable, "second-minimums-short.csv", 10, kShortMinimumFields, "second minimum charges, short form"},
    {"DCH", kTable, "dch.csv", 25, kDchFields, "DCH table"},
    {"WSM", kSettings, "wsm", 7, kWsmFields, "WSM table", 0, ' ', {}, true},
    {"ZMC", kTable, "minimums-by-zip.csv", 41, kZmcFields, "minimum charges by postal-code and rate-code range"},
    {"CLS", kTable, "classes.csv", 5, kClsFields, "freight classes", 20},
    {"WGT", kTable, "weight-breaks.csv", 21, kWgtFields, "weight breaks", 9},
    {"ACC", kTable, "accessorials.csv", 123, kAccFields, "accessorial items", 100},
    {"ADJ", kTable, "adjustments.csv", 347, kAdjFields, "adjustments", 400},
    {"LAB", kLines, "lab.csv", 69, kLabFields, "LAB text", 10500},
    {"LAM", kLines, "lam.csv", 9, kLamFields, "LAM list", 220},
    {"TBL", kTable, "tables.csv", 18, kTblFields, "names of tables", 25},
    {"COZ", kTable, "coz.csv", 6, kCozFields, "COZ table"},
    {"LVL", kTable, "level.csv", 18, kLvlFields, "level file: the tariff's date"},
    {"MCH", kCarried, "", 0, {}, "MCH table"},
    {"RTC", kCarried, "", 0, {}, "RTC file"},
    {"RCL", kCarried, "", 0, {}, "RCL file"},
    {"RTE", kCarried, "", 0, {}, "RTE file"},
    {"RTL", kCarried, "", 0, {}, "RTL file"},
    {"TRM", kCarried, "", 0, {}, "TRM file"},
    {"SRV", kCarried, "", 0, {}, "SRV file"},
};
// clang-format on

}  // namespace

constinit const std::span<const Family> kTableFamilies(kTableFamilyList);

const Family kZipTable = {"ZP6", kTable,     "zip-tables/",
                          12,    kZp6Fields, "a profile's own ZIP table"};

}  // namespace cwt
