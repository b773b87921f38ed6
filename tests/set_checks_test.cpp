// What a build doubts of a tariff set that it can build.
#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "reference/samples/file_contents.h"
#include "support/text_change.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

Files SampleData() {
    Files data = hundredweight::samples::TariffSetFiles({});
    data.merge(hundredweight::samples::ProfileFiles());
    data["Northeast.ZP6"] = data["SAMPLE.ZP6"];
    return data;
}

const Files& SampleFolder() {
    static const Files folder = [] {
        Files files = ExportSet(SampleData(), "SAMPLE").files;
        // Rows that name their profile are refused where it has another name.
        std::string& rows = files.at("profile-zip-discounts.csv");
        for (std::size_t at; (at = rows.find(",Northeast")) != rows.npos;) rows.erase(at + 1, 9);
        return files;
    }();
    return folder;
}

std::vector<std::string> DoubtsOf(const Files& folder) {
    const Translation built = BuildSet(folder);
    std::vector<std::string> told;
    for (const Finding& finding : built.findings.list()) {
        told.push_back(FindingText(finding));
    }
    return told;
}

TEST(SetChecksTest, SampleIsAsItShouldBe) {
    EXPECT_EQ(DoubtsOf(SampleFolder()), std::vector<std::string>());
}

/// A change of one sheet of the sample, and what is then told of it.
struct Doubt {
    const char* sheet;
    const char* was;
    const char* becomes;
    const char* told;  ///< How the line begins, behind the sheet's name.
};

// clang-format off
constexpr Doubt kDoubts[] = {
    {"provinces.csv", "ON,K0A,N9Z", "ON,N9Z,K0A", ":8:4: warning: first \"N9Z\" is above last"},
    {"provinces.csv", "NL,A0A,A9Z", "NL,A0A,B1A", ":3:4: warning: first \"B0A\" is not above the ranges before it: they are searched by halves, so that codes of ranges that overlap or do not ascend are found wrongly or not at all; sort them, each behind the end of the one before it (line 2)"},
    {"provinces.csv", "NL,A0A,A9Z", "NL,001,009", ":2:8: warning: last \"009\" ends the range before the letters"},
    {"provinces.csv", "YT,Y0A,Y9Z", "YT,Y0A,Y9z", ":16:8: warning: last \"Y9z\" has a character that no postal code has"},
    {"provinces.csv", "YT,Y0A,Y9Z", "YT,Y0A,Y9", ":16:8: warning: last \"Y9\" ends the range before all codes"},
    {"point-codes.csv", "75000,79999", "62000,79999", ":5:1: warning: first \"62000\" is not above"},
    {"point-codes.csv", "K0A0A0,P9Z9Z9", "K0A0A0,P9Z9Z", ":7:8: warning: last \"P9Z9Z\" ends the range before"},
    {"tariff-names.csv", "PTGA01,PTTX01", "PTGA01,PTIL01", ":4:1: warning: origin_point_code \"PTGA01\" is there twice"},
    {"tariff-names.csv", "PTGA01,PTTX01", "PTGA01,PTCA01", ":4:1: warning: origin_point_code \"PTGA01\" and its destination sort before"},
    {"tariff-names.csv", "PTGA01,PTTX01", "PTGA01,PTMN01", ":4:8: warning: destination_point_code \"PTMN01\" is the point code of no postal code"},
    {"tariff-names.csv", "SMPLFAK1", "SMP", ":4:15: warning: tariff \"SMP\" has no fourth character"},
    {"minimums-by-zip.csv", "F,30000", "f,30000", ":2:1: warning: direction \"f\" counts as either way"},
    {"minimums-by-zip.csv", "F,30000,31999,60000,62999", ",60000,62999,30000,31999", ":2:2: warning: first_low \"60000\" is above the whole second range"},
    {"minimums-by-zip.csv", "000000,999999,0.00,98.00", "000000,99Z,0.00,-98.00", ":2:34: warning: rate_code_high \"99Z\" ends the range before"},
    {"minimums-by-zip.csv", "98.00", "-98.00", ":2:46: warning: floor_dollars \"-98.00\" is no charge"},
    {"minimums-by-zip.csv", ",10000,14999,90000,96199", "F,30100,31999,60000,62000", ":3:3: warning: first_low \"30100\" begins a record that is never reached, as one before it fits all that it fits, and the first that fits holds; put the narrower first (line 2)"},
    {"classes.csv", "\n400\n", "\n500\n", ":3:1: warning: class \"500\" is there twice"},
    {"classes.csv", "\n92\n", "\n92.5\n", ":12:1: warning: class \"92.5\" is written 92 in a tariff: a class is sent in three characters, and this one would arrive as 92."},
    {"classes.csv", "\n400\n", "\n410\n", ":3:1: warning: class \"410\" is no class of the National Motor Freight Classification"},
    {"classes.csv", "\n50\n", "\n50\nFAK\n", ":3:11: warning: class_map \"1\" maps the first 18 classes, and classes.csv has 19"},
    {"weight-breaks.csv", "M5C,999,500", "M5C,400,500", ":3:9: warning: lowest_pounds \"500\" is above highest_pounds, 400"},
    {"weight-breaks.csv", "M5C,", "XXX,", ":3:1: warning: label \"XXX\" begins with XXX"},
    {"weight-breaks.csv", "L5C,499,1", "L5C,499,100", ":2:9: warning: lowest_pounds \"100\" begins the first break"},
    {"weight-breaks.csv", "M5C,999,500", "M5C,999,499", ":3:9: warning: lowest_pounds \"499\" is within the break before it"},
    {"weight-breaks.csv", "M5C,999,500", "M5C,999,501", ":3:9: warning: lowest_pounds \"501\" leaves a gap behind 499"},
    {"weight-breaks.csv", "M5C,999,500", "M5C,999,1", ":3:9: warning: lowest_pounds \"1\" is not above 1"},
    {"settings.json", "\"surcharge_break\": \"6\"", "\"surcharge_break\": \"9\"", ":34:5: warning: defaults.surcharge_break \"9\" is none of the 9 rows"},
    {"settings.json", "\"surcharge_break\": \"6\"", "\"surcharge_break\": \"6\", \"breaks_in_use\": \"3\"", ":34:29: warning: defaults.breaks_in_use \"3\" cuts nothing"},
    {"settings.json", "\"rate_factor\": 1", "\"rate_factor\": 10", ":29:5: warning: defaults.rate_factor \"10\" has no room"},
    {"settings.json", "\"conversion\": 0,\n    \"surcharge\": 0,\n    \"discount\": 1,\n    \"discount_file_mark\": \"N\",\n    \"conversion_rate\": 0", "\"conversion\": 1,\n    \"surcharge\": 0,\n    \"discount\": 1,\n    \"discount_file_mark\": \"N\",\n    \"conversion_rate\": 12.5", ":27:5: warning: defaults.conversion_rate \"12.5\" and the rate factor 1 make"},
    {"settings.json", "\"zip_digits\": \"5\"", "\"zip_digits\": \"4\"", ":7:5: warning: settings.zip_digits \"4\" is neither 3 nor 5"},
    {"settings.json", "\"label_files\": false", "\"label_files\": \"X\"", ":8:5: warning: settings.label_files \"X\" is neither yes nor no, and counts as no"},
    {"settings.json", "\"group_selector\": \"4\"", "\"group_selector\": \"6\"", ":50:5: warning: discounts.group_selector \"6\" is none of 1 to 5"},
    {"discount-groups.csv", "\n1,45.50", "\n1,455", ":2:3: warning: percent_1 \"455\" is no discount: the engine is sent"},
    {"discount-groups.csv", "0.00,85.00", "9.50,85.00", ":2:57: warning: flat_percent \"9.50\" stands beside percentages by weight break"},
    {"discount-groups.csv", "85.00", "1000.00", ":2:62: warning: floor_dollars \"1000.00\" is no minimum charge"},
    {"discount-weights.csv", "\n3,C,,1000", "\n3,,,", ":5:3: warning: mark \"C\" marks column 4, which does not count: column 3 has no mark"},
    {"discount-weights.csv", "\n8,C,,30000", "\n8,,,", ":2:45: warning: percent_8 \"45.50\" never holds"},
    {"discount-weights.csv", "\n9,C,,40000", "\n9,,,40000", ":10:5: warning: lowest_pounds \"40000\" does not count"},
    {"discount-weights.csv", "\n3,C,,1000", "\n3,C,,500", ":4:6: warning: lowest_pounds \"500\" is not above that of the column before it: columns ascend (line 3)"},
    {"discount-weights.csv", "\n3,C,,1000", "\n3,C,,1500", ":4:6: warning: lowest_pounds \"1500\" is not 1000, where weight break 3 begins"},
    {"weight-breaks.csv", "M40M,9999999,40000\n", "", ":10:6: warning: lowest_pounds \"40000\" belongs to weight break 9"},
    {"profile-zip-discounts.csv", ",NY,,NY,,50.00", ",NY,,NY,,101", ":3:14: warning: percent_1 \"101\" is no discount"},
    {"profile-zip-discounts.csv", ",NY,,NY,", ",NY,,ny,", ":3:10: warning: destination_last \"ny\" is no state"},
    {"profile-zip-discounts.csv", "2,2,,NY,,NY", "2,2,10000,10999,30000,30999", ":3:5: warning: origin_first \"10000\" begins a discount that is never given"},
    {"profile-zip-discounts.csv", "2,2,,NY", "2,3,,NY", ":3:139: warning: zip_discount_count \"2\" is not how many rows"},
    {"profiles.csv", "\nDefault,", "\n,", ":2:1: warning: name \"\" names no profile"},
    {"profiles.csv", "Northeast,1", "Default,1", ":3:1: warning: name \"Default\" is the name of two profiles"},
    {"profiles.csv", "Northeast,1", "Northeast of the Mississippi II,1", ":3:1: warning: name \"Northeast of the Mississippi II\" has 31 characters"},
    {"profiles.csv", "Northeast,1,500,400", "Northeast,1,500,410", ":3:17: warning: class_2 \"410\" is no class of classes.csv"},
    {"profiles.csv", "Northeast,1", "Northeast ,1", ":3:1: warning: name \"Northeast \" begins or ends with a blank"},
    {"states.csv", "\n", "\r", ":1: error: its lines end with CR alone"},
    {"profiles.csv", "0,0,1,0,0,", "0,0,0,0,0,", ":3:93: warning: zip_discounts \"0\" switches the profile's discounts by postal codes off"},
    {"profiles.csv", "0,0,1,0,0,", "0,0,1,0,12.5,", ":3:97: warning: group_1_percent_2 \"12.5\" never holds: discount_file is 0"},
    {"profiles.csv", "Northeast,1", "Southeast,1", ":3:93: warning: zip_discounts \"1\" asks for the profile's own ZIP table"},
};
// clang-format on

TEST(SetChecksTest, TellsEachDoubtAtItsPlace) {
    for (const Doubt& doubt : kDoubts) {
        Files folder = SampleFolder();
        Replace(folder.at(doubt.sheet), doubt.was, doubt.becomes);
        const std::vector<std::string> told = DoubtsOf(folder);
        EXPECT_TRUE(std::ranges::any_of(told,
                                        [&](const std::string& line) {
                                            const std::size_t name = line.find(':');
                                            return line.substr(name).starts_with(doubt.told);
                                        }))
            << doubt.becomes << ": " << ::testing::PrintToString(told);
    }
}

TEST(SetChecksTest, RowsOfAnotherProfileAreRefused) {
    Files folder = SampleFolder();
    folder.at("profile-zip-discounts.csv")
        .insert(folder.at("profile-zip-discounts.csv").size() - 1, "Default");
    EXPECT_EQ(
        DoubtsOf(folder)[0],
        "profile-zip-discounts.csv:3:75: error: profile \"Default\" is not \"Northeast\", which "
        "profiles.csv has in row 2");
}

TEST(SetChecksTest, FlatPercentagesThatCountAsNothingAreNotDoubted) {
    Files folder = SampleFolder();
    Replace(folder.at("discount-groups.csv"), "0.00,85.00", "9.50,85.00");
    Replace(folder.at("settings.json"), "\"no_flat_discount\": false",
            "\"no_flat_discount\": true");
    EXPECT_EQ(DoubtsOf(folder), std::vector<std::string>());
}

TEST(SetChecksTest, AFileThatIsMissingIsLookedForByItsNearestName) {
    Files folder = SampleFolder();
    folder["setting.json"] = folder.extract("settings.json").mapped();
    EXPECT_EQ(DoubtsOf(folder)[0],
              "settings.json: error: is missing: it names the set; is setting.json meant for it?");
}

TEST(SetChecksTest, TellsFiveOfAKind) {
    Files folder = SampleFolder();
    std::string& classes = folder.at("classes.csv");
    classes = "class\n500\n1\n2\n3\n4\n5\n6\n7\n";
    std::vector<std::string> told = DoubtsOf(folder);
    std::erase_if(told, [](const std::string& line) { return !line.starts_with("classes"); });
    ASSERT_EQ(told.size(), 5);
    EXPECT_TRUE(told[4].starts_with("classes.csv:7:1: ")) << told[4];
    EXPECT_TRUE(told[4].ends_with("; and 2 more like this")) << told[4];
}

/// A record of minimums by postal codes of few values, and what it fits.
struct Minimum {
    bool is_one_way;
    int low[2], high[2];

    bool Fits(int origin, int destination) const {
        if (!is_one_way && origin > destination) std::swap(origin, destination);
        return low[0] <= origin && origin <= high[0] && low[1] <= destination &&
               destination <= high[1];
    }
};

TEST(SetChecksTest, HiddenMinimumsAreThoseThatOneBeforeThemFits) {
    constexpr int kZips = 6;
    std::mt19937 random(20250106);
    for (int set = 0; set < 300; ++set) {
        std::vector<Minimum> minimums(3 + random() % 4);
        std::string sheet = SampleFolder().at("minimums-by-zip.csv");
        sheet.resize(sheet.find('\n') + 1);
        std::set<std::size_t> hidden;
        for (std::size_t i = 0; i < minimums.size(); ++i) {
            Minimum& own = minimums[i];
            own.is_one_way = random() % 2 == 0;
            sheet += own.is_one_way ? "F" : "";
            for (int range = 0; range < 2; ++range) {
                own.low[range] = static_cast<int>(random() % kZips);
                own.high[range] = own.low[range] + static_cast<int>(random() % 3);
                sheet += fmt::format(",{:05},{:05}", own.low[range], own.high[range]);
            }
            sheet += ",000000,999999,0.00,0.00\n";
            const auto hides = [&](const Minimum& before) {
                bool fits_any = false;
                for (int pair = 0; pair < 100; ++pair) {
                    if (!own.Fits(pair / 10, pair % 10)) continue;
                    fits_any = true;
                    if (!before.Fits(pair / 10, pair % 10)) return false;
                }
                return fits_any;
            };
            if (std::any_of(minimums.begin(), minimums.begin() + static_cast<int>(i), hides)) {
                hidden.insert(i);
            }
        }
        const Translation built = BuildSet(
            {{"settings.json", R"({"schema": "hundredweight/tariff-set/1", "set": "SAMPLE"})"},
             {"minimums-by-zip.csv", sheet}});
        std::set<std::size_t> told;
        for (const Finding& finding : built.findings.list()) {
            if (finding.text.find("never reached") != std::string::npos) {
                told.insert(finding.place.line - 2);
            }
        }
        ASSERT_EQ(told, hidden) << sheet;
    }
}

}  // namespace
}  // namespace cwt
