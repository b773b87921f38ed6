// What changes from one tariff set to another: what is said, and that nothing is lost.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "reference/samples/file_contents.h"
#include "support/text_change.h"
#include "tariffs/difference/difference.h"
#include "tariffs/difference/row_matching.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

Files OldData() {
    Files files = hundredweight::samples::TariffSetFiles({});
    files.merge(hundredweight::samples::ProfileFiles());
    return files;
}

Files OldFolder() {
    return ExportSet(OldData(), "SAMPLE").files;
}

DifferenceSide Folder(Files files) {
    Findings findings;
    DifferenceSide side = SideOfFolder("folder", std::move(files), findings);
    EXPECT_FALSE(findings.Has(Finding::kError)) << FindingText(findings.list().at(0));
    return side;
}

std::string RowText(const std::string& text, std::size_t number) {
    return std::string(SheetRows(text).rows.at(number - 1));
}

TEST(TariffDifferenceTest, SpellingAndFormMakeNone) {
    Files spelled = OldFolder();
    std::string& minimums = spelled["minimums-by-zip.csv"];
    Replace(minimums, ",98.00", ",98");
    for (std::size_t at = 0; (at = minimums.find('\n', at)) != minimums.npos; at += 2) {
        minimums.insert(at, "\r");
    }
    Findings findings;
    EXPECT_TRUE(DifferenceOf(Folder(OldFolder()), Folder(spelled)).is_alike());
    EXPECT_TRUE(
        DifferenceOf(SideOfDirectory("data", "SAMPLE", OldData(), {}, findings), Folder(spelled))
            .is_alike());
}

TEST(TariffDifferenceTest, ChangesAreSaidInTheWordsOfTheTrade) {
    struct Case {
        const char* sheet;
        std::function<void(std::string& text)> change;
        std::vector<const char*> said;
    };
    const auto by = [](const char* what, const char* instead) {
        return [=](std::string& text) { Replace(text, what, instead); };
    };
    const Case cases[] = {
        {"settings.json",
         by("\"rate_factor\": 1", "\"rate_factor\": 1.05"),
         {"the user's defaults, settings.json: defaults\n  rate_factor: 1 -> 1.05 (+5.00 %)\n"}},
        {"minimums-by-zip.csv",
         by(",98.00", ",102.90"),
         {"minimum charges by postal-code and rate-code range, minimums-by-zip.csv\n"
          "  2 rows in OLD, 2 in NEW: 1 changed\n    changed F 30000-31999, 60000-62999, "
          "rate codes 000000-999999: floor_dollars 98.00 -> 102.90 (+5.00 %)\n"}},
        {"minimums-by-zip.csv",
         [](std::string& text) {
             const std::string first = RowText(text, 1);
             Replace(text, first, "");
             text += first + first;
         },
         {"2 rows in OLD, 3 in NEW: 1 new, 1 moved\n  The first row that fits holds",
          "; row 1, was 2\n"}},
        {"classes.csv",
         [](std::string& text) {
             text.erase(text.find(RowText(text, 2)), RowText(text, 2).size());
         },
         {"freight classes, classes.csv\n  18 rows in OLD, 17 in NEW: 1 gone\n    gone    class "
          "400\n"}},
        {"profiles.csv",
         [](std::string& text) {
             std::string row = RowText(text, 1);
             Replace(row, "Default", "Harbor");
             Replace(row, ",0,0,0,0,0,0,0,0,0,0,0,0,0,", ",0,1,0,48,48,48,48,48,48,48,48,48,0,");
             text += row;
         },
         {"    new     Harbor: ", "discount_file 1, group_1_percent_1-9 48, and "}},
        {"carried-bytes.csv",
         by("BSE,18,", "BSE,17,"),
         {"bytes that no other text tells", "changed BSE: bytes ..."}},
        {"notes.csv", by("", "key,days\na,1\n"), {"notes.csv, which nobody reads: only in NEW"}},
        {"README.md", by("", "Our tariff."), {"README.md: only in NEW\n"}},
    };
    for (const Case& each : cases) {
        Files changed = OldFolder();
        each.change(changed[each.sheet]);
        const Difference difference = DifferenceOf(Folder(OldFolder()), Folder(changed));
        const std::string text = DifferenceText(difference, false);
        EXPECT_EQ(difference.sheets.size() + difference.files.size(), 1) << text;
        for (const char* said : each.said) EXPECT_NE(text.find(said), text.npos) << text;
    }
}

TEST(TariffDifferenceTest, AnEntryThatIsPutInMovesAndChangesNoOther) {
    Files before = OldFolder();
    Files after = before;
    const std::string sheet = "profile-zip-discounts.csv";
    const std::string header = before[sheet].substr(0, before[sheet].find('\n') + 1);
    const std::string commas(static_cast<std::size_t>(std::ranges::count(header, ',')) - 5, ',');
    before[sheet] = header + "1,1,10000,10999,20000,20999" + commas + "\n" +
                    "1,2,30000,30999,40000,40999" + commas + "\n";
    after[sheet] = header + "1,1,50000,,60000,60999" + commas + "\n" +
                   "1,2,10000,10999,20000,20999" + commas + "\n" + "1,3,30000,30999,40000,40999" +
                   commas + "\n";
    const Difference difference = DifferenceOf(Folder(before), Folder(after));
    ASSERT_EQ(difference.sheets.size(), 1);
    EXPECT_EQ(difference.sheets[0].added, 1);
    ASSERT_EQ(difference.sheets[0].rows.size(), 1);
    EXPECT_TRUE(RowName(difference.sheets[0], difference.sheets[0].rows[0])
                    .ends_with(": 50000 to 60000-60999"));
}

TEST(TariffDifferenceTest, ManyNumbersOfAColumnAreSummedUp) {
    DifferenceSide of_old, of_new;
    for (int i = 0; i < 648; ++i) {
        const auto row = [&](int cents) {
            return "T,2041," + std::to_string(i) + "," + std::to_string(cents) + ".00,0,5\n";
        };
        const std::string header =
            "tariff,scale,class,rate_dollars_1,rate_dollars_2,flat_percent\n";
        if (i == 0) of_old.sheets["engine/rates.csv"] = of_new.sheets["engine/rates.csv"] = header;
        of_old.sheets["engine/rates.csv"] += row(1000);
        of_new.sheets["engine/rates.csv"] += row(i < 300 ? 1040 : i < 647 ? 1050 : 990);
    }
    const std::string text =
        DifferenceText(DifferenceOf(std::move(of_old), std::move(of_new)), false);
    EXPECT_NE(text.find("rate_dollars: 647 of 1,296 rose, 1 fell, by -1.00 to +5.00 %, median "
                        "+5.00 %\n"),
              text.npos)
        << text;
    EXPECT_NE(text.find("and 643 more changed; --all names them"), text.npos) << text;
}

TEST(TariffDifferenceTest, RowsThatAreNotToldAreTheSameInTheSameOrder) {
    std::mt19937 random(20250106);
    for (int round = 0; round < 2000; ++round) {
        DifferenceSide sides[2];
        for (DifferenceSide& side : sides) {
            std::string& text = side.sheets["point-codes.csv"] = "first,last,point_code\n";
            for (auto rows = random() % 12; rows > 0; --rows) {
                text += "1000" + std::to_string(random() % 6) + ",10009,";
                text += std::to_string(random() % 2) + '\n';
            }
        }
        std::vector<std::string_view> left[2];
        const Difference difference = DifferenceOf(std::move(sides[0]), std::move(sides[1]));
        const DifferenceSide* const compared[] = {&difference.of_old, &difference.of_new};
        for (const std::size_t i : {0U, 1U}) {
            const SheetRows sheet(compared[i]->sheets.at("point-codes.csv"));
            for (std::uint32_t number = 1; number <= sheet.rows.size(); ++number) {
                const auto is_told = [&](const RowDifference& row) {
                    return (i == 0 ? row.old_number : row.new_number) == number;
                };
                const bool told = !difference.sheets.empty() &&
                                  std::ranges::any_of(difference.sheets[0].rows, is_told);
                if (!told) left[i].push_back(sheet.rows[number - 1]);
            }
        }
        ASSERT_EQ(left[0], left[1]) << DifferenceText(difference, true);
    }
}

}  // namespace
}  // namespace cwt
