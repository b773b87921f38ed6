// The rate base and the terminals as sheets: files come back to the byte, and what is wrong with
// them is told with its place.
#include <gtest/gtest.h>

#include <string>

#include "reference/samples/file_contents.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

namespace samples = hundredweight::samples;

Files PartnerFiles() {
    Files files = samples::EngineFiles();
    files.merge(samples::ServiceGuideFiles());
    return files;
}

/// With lanes between single prefixes before the sample's wider ones, as a carrier has them.
Files CarrierFiles() {
    constexpr int kOrigins = 20, kDestinations = 30;
    std::string lanes;
    for (int i = 0; i < kOrigins * kDestinations; ++i) {
        lanes += "SMPLNATL | " + std::to_string(300 + i / kDestinations) + " | " +
                 std::to_string(600 + i % kDestinations) + " | 2052 | 1.00 | 12.50\n";
    }
    Files files = PartnerFiles();
    std::string& file = files["tolvex-lanes.txt"];
    file.insert(file.find('\n') + 1, lanes);
    return files;
}

std::string Told(const Findings& findings) {
    std::string told;
    for (const Finding& finding : findings.list()) told += FindingText(finding) + '\n';
    return told;
}

/// The text with its part replaced, which it has.
std::string Changed(std::string text, const std::string& part, const std::string& by) {
    const std::size_t at = text.find(part);
    EXPECT_NE(at, text.npos) << part;
    return text.replace(at, part.size(), by);
}

TEST(PartnerTablesTest, FilesComeBackFromSheets) {
    for (const Files& data : {PartnerFiles(), CarrierFiles()}) {
        const Translation folder = ExportSet(data, "SAMPLE");
        EXPECT_EQ(Told(folder.findings), "");
        for (const auto& [name, text] : folder.files) EXPECT_FALSE(name.ends_with(".txt")) << name;
        // As many columns as the widest row has rates.
        EXPECT_NE(folder.files.at("engine/rates.csv").find("rate_dollars_11\n"), std::string::npos);
        const Translation built = BuildSet(folder.files);
        EXPECT_EQ(Told(built.findings), "");
        EXPECT_TRUE(built.files == data);
        EXPECT_TRUE(ExportSet(built.files, "SAMPLE").files == folder.files);
    }
}

TEST(PartnerTablesTest, LettersAreThoseOfWindows1252) {
    Files data = PartnerFiles();
    std::string& points = data["tolvex-points.txt"];
    points +=
        "H2X1Y4 | Montr\xe9"
        "al | QC | D\n";
    const Files folder = ExportSet(data, "SAMPLE").files;
    EXPECT_NE(folder.at("engine/points.csv")
                  .find("H2X1Y4,Montr\xc3\xa9"
                        "al,QC,D\n"),
              std::string::npos);
    EXPECT_EQ(BuildSet(folder).files, data);
}

TEST(PartnerTablesTest, OddFilesComeBackAsTheyAre) {
    struct Case {
        const char* file;
        const char* part;
        const char* by;
        const char* told;  ///< By the export.
    };
    const Case cases[] = {
        {"tolvex-lanes.txt", "# tariff |", "# Tariff |", "note: a sheet would not give this line"},
        {"tolvex-lanes.txt", "\nSMPLNATL | 300-319", "\n# South\nSMPLNATL | 300-319", "note: a sh"},
        {"tolvex-points.txt", "NY | D\n", "NY|D\n", "tolvex-points.txt:2: note: a sheet"},
        {"tolvex-points.txt", "NY | D\n", "NY | D\r\n", "tolvex-points.txt:2: note: a sheet"},
        {"tolvex-points.txt", "Toronto | ON | D\n", "Toronto | ON | D", "14: note: a sheet"},
        {"tolvex-points.txt", "New York", "New \x01York", "tolvex-points.txt:2: note: a sheet"},
        {"tolvex-points.txt", "New York", "\xc3\x89tats", "warning: has letters in UTF-8"},
        {"tolvex-rates.txt", " | 2041 | 70 |", " | 2041 | 71 |", "warning: class \"71\" is no cl"},
        {"tolvex-tariffs.txt", "SMPLWIDE", "WIDE", "tariffs.txt:5:1: warning: tariff \"WIDE\""},
        {"tolvex-states.txt", "005-005 |", "005-005", "states.txt:2: warning: the row has not"},
        {"servgd-transit.txt", "NYC01 | ATL01", "NYC01 | ATL1", "2:9: warning: other_terminal"}};
    for (const Case& odd : cases) {
        Files data = PartnerFiles();
        data[odd.file] = Changed(data[odd.file], odd.part, odd.by);
        const Translation folder = ExportSet(data, "SAMPLE");
        EXPECT_NE(Told(folder.findings).find(odd.told), std::string::npos) << odd.told << "\n"
                                                                           << Told(folder.findings);
        const Translation built = BuildSet(folder.files);
        EXPECT_FALSE(built.findings.Has(Finding::kError)) << Told(built.findings);
        EXPECT_EQ(built.files, data) << odd.by;
    }
}

TEST(PartnerTablesTest, WhatIsWrongIsToldWithItsPlace) {
    struct Case {
        const char* sheet;
        const char* part;
        const char* by;
        const char* told;  ///< What the line of the finding holds.
    };
    // clang-format off
    const Case cases[] = {
        {"engine/tariffs.csv", "2025-01-06", "01-06-2025", ":2:10: error: effective \"01-06-2025\" is no date"},
        {"engine/tariffs.csv", "2025-01-06", "2024-02-30", ":2:10: warning: effective \"2024-02-30\" is no day"},
        {"engine/tariffs.csv", "SMPLNATL,2025-01-06", "SMPLNATL,2025-02-06", ":3:10: warning: effective \"2025-02-06\" is later than the day of level.csv"},
        {"engine/tariffs.csv", "1 500 1000", "1 1000 500", ":2:85: error: breaks_pounds \"1 1000 500 2000 5000 10000 20000 30000 4...\" does not ascend"},
        {"engine/tariffs.csv", "FAK,1 ", "FAK,2 ", "does not begin at 1 pound"},
        {"engine/tariffs.csv", "500 400", "500 500", ":2:21: warning: classes"},
        {"engine/tariffs.csv", "SMPLWIDE", "SMPLNATL", ":5:1: error: tariff \"SMPLNATL\" is the name of"},
        {"engine/rates.csv", "72.50,,", "72.50,1.00,", ":2:79: error: rate_dollars_10 \"1.00\" is at odds with the 9"},
        {"engine/rates.csv", "72.50,,", "72.50,,1.00", ":2:80: error: rate_dollars_11 \"1.00\" stands behind"},
        {"engine/rates.csv", ",2041,400,", ",2041,500,", ":3:15: error: class \"500\" has its rates"},
        {"engine/rates.csv", "SMPLFAK1,3010,FAK", "SMPLFAK1,3011,FAK", "lanes.csv:7:26: error: scale \"3010\" is no scale"},
        {"engine/rates.csv", "SMPLWIDE,4007,100", "SMPLWIDE,4008,100", "lanes.csv:8:26: error: scale \"4007\" has no rates for a class"},
        {"engine/rates.csv", "SMPLNATL,2041,500", "SMPLNATL,LOC,500,1.00,1.00,1.00,1.00,1.00,1.00,1.00,1.00,1.00,,\nSMPLNATL,2041,500", ":2:10: warning: scale \"LOC\" counts as a number on bills"},
        {"engine/lanes.csv", "95.00", "95.005", ":2:31: error: minimum_dollars \"95.005\" is no amount"},
        {"engine/lanes.csv", "300,319", "320,319", ":2:10: error: origin_first \"320\" is no range"},
        {"engine/lanes.csv", "300,319", "30,319", ":2:10: error: origin_first \"30\" is no prefix"},
        {"engine/lanes.csv", "300,319", "300,K9Z", ":2:10: warning: origin_first \"300\" begins with digits"},
        {"engine/lanes.csv", "2041", "2042", ":2:26: error: scale \"2042\" is no scale"},
        {"engine/lanes.csv", "2041", "20#1", ":2:26: error: scale \"20#1\" holds | or #"},
        {"engine/lanes.csv", "SMPLNATL,600,629", "SMPLNATL,300,302,601,601,2041,1.00,0.00\nSMPLNATL,600,629", ":3: warning: the row never holds: another before it fits wherever it does, line 2"},
        {"engine/lanes.csv", "SMPLNATL,", "SMPLLOCL,", ":2:1: error: tariff \"SMPLLOCL\" is no tariff"},
        {"engine/points.csv", "10001", "1001", ":2:1: warning: postal_code \"1001\" is no postal code"},
        {"engine/points.csv", "10001", "99501", ":2:1: warning: postal_code \"99501\" is outside all lanes"},
        {"engine/points.csv", "New York", "New York on the Hudson", "is longer than 17 characters"},
        {"engine/points.csv", "New York", "New York ", "has a blank at an end"},
        {"engine/points.csv", "New York", "New \xe2\x98\x83", "a character that Windows-1252 has not"},
        {"engine/states.csv", ",GA", ",GEO", "error: state \"GEO\" is no state"},
        {"engine/states.csv", "\n006", "\n005,,ZZ\n006", ":3: warning: the row never holds"},
        {"service-guide/terminals.csv", ",ATL01", ",NYC01", ":3:18: error: code \"NYC01\" is the code"},
        {"service-guide/points.csv", "ATL01", "ATL09", ":4:9: error: terminal \"ATL09\" is no terminal"},
        {"service-guide/transit-days.csv", ",2,", ",200,", "standard_days \"200\" is longer than 2"},
        {"service-guide/transit-days.csv", "CHI01,LAX", "CHI01,NYC01,1,,\nCHI01,LAX", "terminals, line 3"},
        {"tariff-names.csv", "SMPLNATL", "SMPLLOCL", "2: warning: tariff \"SMPLLOCL\" is no tariff of"}};
    // clang-format on
    Files data = PartnerFiles();
    data["SAMPLE.CMT"] = "000001000002SMPLNATL";
    data["SAMPLE.LVL"] = samples::TariffSetFiles({}).at("SAMPLE.LVL");
    const Files folder = ExportSet(data, "SAMPLE").files;
    for (const Case& wrong : cases) {
        Files changed = folder;
        changed[wrong.sheet] = Changed(folder.at(wrong.sheet), wrong.part, wrong.by);
        const Findings findings = BuildSet(changed).findings;
        EXPECT_EQ(findings.list().size(), 1U) << Told(findings);
        EXPECT_NE(Told(findings).find(wrong.told), std::string::npos) << wrong.told << "\n"
                                                                      << Told(findings);
    }
}

TEST(PartnerTablesTest, FoldersAreWholeAndFindingsFew) {
    Files folder = ExportSet(PartnerFiles(), "SAMPLE").files;
    std::string& points = folder["engine/points.csv"];
    for (std::size_t at = 0; (at = points.find(",D\n", at)) != points.npos;) points[at + 1] = 'X';
    folder["engine/tolvex-lanes.txt"] = "";
    folder.erase("engine/states.csv");
    const Findings findings = BuildSet(folder).findings;
    const std::string told = Told(findings);
    EXPECT_EQ(findings.list().size(), 8U) << told;
    for (const char* part :
         {"points.csv: warning: 6 more: is neither D", "is there beside engine/lan",
          "engine/states.csv: warning: is missing: without"}) {
        EXPECT_NE(told.find(part), std::string::npos) << part << "\n" << told;
    }
}

}  // namespace
}  // namespace cwt
