// What cwt makes of two batches of the same shipments, written by hand.
#include "support/batch_rows.h"
#include "support/table.h"
#include "support/tariff_fixture.h"

namespace hundredweight {
namespace {

class ComparisonTest : public TariffTest {
 protected:
    struct Printed {
        int exit_code;
        std::string output, complaints;
    };

    Printed Compare(const std::string& arguments) const {
        const std::string complaints = Path("complaints");
        FILE* const pipe =
            popen((HWT_CWT " compare " + arguments + " 2>" + complaints).c_str(), "r");
        Printed printed;
        for (int byte; (byte = fgetc(pipe)) != EOF;) printed.output += static_cast<char>(byte);
        printed.exit_code = pclose(pipe) / HWT_EXIT_CODE_UNIT;
        printed.complaints = FileContent(complaints);
        return printed;
    }

    std::string Path(const std::string& name) const { return (directory_ / name).string(); }

    std::string Written(const std::string& name, const std::string& content) const {
        std::ofstream(directory_ / name, std::ios::binary) << content;
        return Path(name);
    }

    std::string BothFiles() const {
        return Written("old.ndjson", Lines(kOld)) + " " + Written("new.ndjson", Lines(kNew));
    }

    void ExpectBroken(const std::string& arguments, const std::string& complaint) const {
        const Printed printed = Compare(arguments);
        EXPECT_EQ(printed.exit_code, 2) << arguments;
        EXPECT_EQ(printed.output, "");
        EXPECT_NE(printed.complaints.find(complaint), std::string::npos) << printed.complaints;
    }
};

TEST_F(ComparisonTest, EveryKindOfChangeIsCountedAndAddedUpToTheCent) {
    const Printed printed = Compare(BothFiles() + " --json");
    ASSERT_EQ(printed.exit_code, 0) << printed.complaints;
    const Json comparison = Json::parse(printed.output);
    const std::pair<const char*, const char*> rows[] = {
        {"/statuses",
         R"({"rated":{"rated":6,"refused":1,"failed":0},"refused":{"rated":1,"refused":1,"failed":0},"failed":{"rated":0,"refused":0,"failed":1}})"},
        {"/other_reason", "1"},
        {"/old/tariffs", R"([{"name":"SMPLNATL","date":"2025-01-06","rows":7}])"},
        {"/old/rated_here_only", R"({"rows":1,"total_due":"77.77"})"},
        {"/new/rated_here_only", R"({"rows":1,"total_due":"33.00"})"},
        {"/rated_in_both/rose", "3"},
        {"/rated_in_both/fell", "2"},
        {"/rated_in_both/stayed", "1"},
        {"/rated_in_both/other_discount_percent", "1"},
        {"/rated_in_both/other_weight_break", "1"},
        {"/rated_in_both/lines_rated_as_another_class", "1"},
        {"/rated_in_both/without_percent", "1"},
        {"/rated_in_both/deficit_taken", R"({"both":0,"old_only":1,"new_only":0,"neither":5})"},
        {"/rated_in_both/minimum_held", R"({"both":0,"old_only":1,"new_only":0,"neither":5})"},
        {"/rated_in_both/gross_charge",
         R"({"old":"585.00","new":"604.90","change":"19.90","percent_of_old":"3.40"})"},
        {"/rated_in_both/deficit_charge",
         R"({"old":"20.00","new":"0.00","change":"-20.00","percent_of_old":"-100.00"})"},
        {"/rated_in_both/discount",
         R"({"old":"24.00","new":"28.49","change":"4.49","percent_of_old":"18.71"})"},
        {"/rated_in_both/net_charge",
         R"({"old":"575.00","new":"576.41","change":"1.41","percent_of_old":"0.25"})"},
        {"/rated_in_both/surcharge",
         R"({"old":"9.00","new":"9.44","change":"0.44","percent_of_old":"4.89"})"},
        {"/rated_in_both/total_due",
         R"({"old":"584.00","new":"585.85","change":"1.85","percent_of_old":"0.32"})"},
        {"/rated_in_both/changes_percent/percentiles/0/change", R"("-3.1")"},
        {"/rated_in_both/changes_percent/percentiles/4/change", R"("0.0")"},
        {"/rated_in_both/changes_percent/percentiles/5/change", R"("4.9")"},
        {"/rated_in_both/changes_dollars/percentiles/0/change", R"("-10.00")"},
        {"/rated_in_both/changes_dollars/percentiles/5/change", R"("4.85")"},
        {"/rated_in_both/lanes",
         R"([{"lane":"303 to 606","count":5,"rose":3,"fell":1,"old":"264.00","new":"275.85","change":"11.85","percent_of_old":"4.49"},
            {"lane":"M5H to 640M","count":1,"rose":0,"fell":1,"old":"320.00","new":"310.00","change":"-10.00","percent_of_old":"-3.13"}])"},
        {"/rated_in_both/classes",
         R"([{"rated_as":"70","count":6,"rose":4,"fell":0,"old":"565.00","new":"604.90","change":"39.90","percent_of_old":"7.06"}])"},
        {"/rated_in_both/weight_breaks/1",
         R"({"lowest_weight":2000,"count":1,"rose":0,"fell":1,"old":"320.00","new":"310.00","change":"-10.00","percent_of_old":"-3.13"})"},
    };
    for (const auto& [place, value] : rows) {
        EXPECT_EQ(comparison.at(Json::json_pointer(place)), Json::parse(value)) << place;
    }
    int64_t in_bands = 0;
    for (const Json& band : comparison["rated_in_both"]["changes_percent"]["bands"]) {
        in_bands += band["rows"].get<int64_t>();
    }
    EXPECT_EQ(in_bands, 5);
}

TEST_F(ComparisonTest, BothFormsOfRowsAreComparedAlike) {
    const std::string lines = BothFiles();
    Json expected = Json::parse(Compare(lines + " --json").output);
    const std::string csv =
        Written("old.csv", "\xEF\xBB\xBF" + Csv(kOld)) + " " + Written("new.csv", Csv(kNew));
    for (const std::string& files : {csv, Path("old.ndjson") + " " + Path("new.csv")}) {
        const Printed printed = Compare(files + " --json");
        ASSERT_EQ(printed.exit_code, 0) << printed.complaints;
        Json comparison = Json::parse(printed.output);
        for (const char* side : {"old", "new"}) comparison[side]["file"] = expected[side]["file"];
        EXPECT_EQ(comparison, expected);
    }
    EXPECT_EQ(
        Compare("--from csv " + Written("a.txt", Csv(kOld)) + " " + Path("new.csv")).exit_code, 0);
}

TEST_F(ComparisonTest, FilesThatAreNotOfTheSameShipmentsAreToldWhereTheyPart) {
    const struct {
        const char *place, *value, *complaint;
    } rows[] = {
        {"/2/id", R"("other")", "row 3: "},
        {"/2/row", "4", "\"3\" and \"4\""},
        {"/2/bill/lines/0/weight", "1901", "lines[0].weight \"1900\" and \"1901\""},
        {"/2/bill/lines/0/class", R"("85")", "lines[0].class \"70\" and \"85\""},
        {"/2/bill/origin/zip", R"("30304")", "origin \"M5H2N2\" and \"30304\""},
    };
    const std::string old = Written("old.ndjson", Lines(kOld));
    for (const auto& [place, value, complaint] : rows) {
        Json changed = kNew;
        changed[Json::json_pointer(place)] = Json::parse(value);
        ExpectBroken(old + " " + Written("new.ndjson", Lines(changed)), complaint);
    }
    ExpectBroken(old + " " + Written("new.ndjson", Lines({kNew.begin(), kNew.end() - 1})),
                 "new.ndjson ends after row 9, where ");
    const std::string twice = Written("twice.ndjson", Lines(kOld) + Lines(kOld));
    ExpectBroken(twice + " " + twice, "row 1 comes after row 10");
    const std::string empty = Written("empty.ndjson", "");
    ExpectBroken(empty + " " + empty, "have no rows");
}

TEST_F(ComparisonTest, WhatIsNoOutputOfABatchIsToldWithLineAndColumn) {
    const std::string good = Lines({kOld[0]}), row = kOld[1].dump();
    const auto without = [&](const char* place) {
        return Json(kOld[1]).patch({{{"op", "remove"}, {"path", place}}}).dump() + "\n";
    };
    const auto with = [&](const char* place, Json value) {
        return Json(kOld[1])
                   .patch({{{"op", "add"}, {"path", place}, {"value", std::move(value)}}})
                   .dump() +
               "\n";
    };
    const std::pair<std::string, const char*> lines[] = {
        {"row,id,status\n", "line 2, column 1: this is no JSON"},
        {row, "the last line has no end"},
        {row.substr(0, 50) + "\n", "line 2, column 50: this is no JSON"},
        {row + " x\n", "this is no JSON"},
        {row + std::string("\0\n", 2), "a zero byte"},
        {"7\n", "line 2, column 1: no number is wanted"},
        {"[]\n", "no list is wanted"},
        {"{\"row\":2,\"row\":2}\n", "line 2, column 14: row: the key is there twice"},
        {without("/bill"), "a bill is wanted of a rated row"},
        {without("/bill/total_due"), "bill.total_due: missing"},
        {with("/bill/total_due", "50.0"), "bill.total_due: an amount of two decimals"},
        {with("/bill/total_due", 50), "bill.total_due: no number is wanted"},
        {with("/bill/billed_weight", 1.5), "bill.billed_weight: a whole number"},
        {with("/bill/lines", Json::array()), "bill.lines: none"},
        {with("/bill/currency", "CAD"), "bill.currency: USD is wanted"},
        {with("/status", "done"), "status: rated, refused or failed"},
        {with("/schema", "hundredweight/row/2"), "schema: hundredweight/row/1 is wanted"},
    };
    for (const auto& [text, complaint] : lines) {
        const std::string file = Written("bad.ndjson", good + text);
        ExpectBroken(file + " " + file, complaint);
    }
    const std::string header = Csv({});
    const std::string record = Csv({kOld[1]}).substr(header.size());
    const std::pair<std::string, const char*> records[] = {
        {"id,row\r\n", "line 1: the header"},
        {"row,id,status\r\n", "line 1: a batch's rows have a column tariff"},
        {header + "1,x\r\n", "line 2: 2 fields where the header has"},
        {header + "1,\"x\r\n", "quotes that do not end"},
        {header + "1,\"x\"y\r\n", "line 2: something follows the quote"},
        {header + "x" + record.substr(1), "line 2: row: a whole number is wanted"},
        {header + record.substr(0, record.rfind("50.00")) + "50.0,\r\n",
         "total_due: an amount of two decimals"},
    };
    for (const auto& [text, complaint] : records) {
        const std::string file = Written("bad.csv", text);
        ExpectBroken(file + " " + file, complaint);
    }
    ExpectBroken(Path("none.csv") + " " + Path("none.csv"), "No such file");
    ExpectBroken(Written("rows.txt", good) + " " + Path("rows.txt"), "--from ndjson or csv");
}

TEST_F(ComparisonTest, FilesAreWrittenWholeAndReplacedOnlyWhenThatIsAskedFor) {
    const std::string files = BothFiles(), csv = Path("pairs.csv"), page = Path("page.html");
    ASSERT_EQ(Compare(files + " --csv " + csv + " --html " + page).exit_code, 0);
    const std::string pairs = FileContent(csv);
    EXPECT_EQ(std::ranges::count(pairs, '\n'), 1 + 8) << "what stayed and what failed is left out";
    EXPECT_NE(pairs.find("2,\"at, \"\"minimum\"\"\",30303,60601,1000,rated,rated,"),
              std::string::npos);
    EXPECT_NE(pairs.find(",50.00,50.00,yes,no,50.00,54.00,0.00,0.00,50.00,54.00,4.00,8.00\r\n"),
              std::string::npos)
        << pairs;
    ExpectBroken(files + " --csv " + csv, "pairs.csv: is there already; --force");
    ExpectBroken(files + " --force --csv " + Path("old.ndjson"),
                 "is compared and cannot be written");
    ExpectBroken(files + " --force --csv " + csv + " --html " + csv, "cannot be the page too");
    ExpectBroken(Path("old.ndjson") + " " + Written("cut.ndjson", "x") + " --force --csv " + csv,
                 "cut.ndjson");
    EXPECT_EQ(FileContent(csv), pairs) << "a comparison that broke leaves what was there";
    EXPECT_EQ(Compare(files + " --all --force --csv " + csv).exit_code, 0);
    EXPECT_EQ(std::ranges::count(FileContent(csv), '\n'), 1 + 10);
    for (const auto& file : std::filesystem::directory_iterator(directory_)) {
        EXPECT_NE(file.path().extension(), ".part") << file.path();
    }
}

TEST_F(ComparisonTest, ThePageNeedsNothingElseAndTextFitsATerminal) {
    const std::string files = BothFiles(), page = Path("page.html");
    const Printed printed = Compare(files + " --html " + page);
    const std::string html = FileContent(page);
    for (const char* outside : {"http", "<script", "url(", "@import", "src=", "href"}) {
        EXPECT_EQ(html.find(outside), std::string::npos) << outside;
    }
    std::size_t plots = 0;
    for (std::size_t at = 0; (at = html.find("<svg", at)) != html.npos; ++at, ++plots) {
        EXPECT_EQ(html.find("role=\"img\" aria-labelledby", at), html.find("role=", at));
    }
    EXPECT_EQ(plots, 6U);
    for (const char* shown : {"+11.85", "-10.00", "M5H to 640M", "585.85"}) {
        EXPECT_NE(html.find(shown), std::string::npos) << shown;
        EXPECT_NE(printed.output.find(shown), std::string::npos) << shown;
    }
    std::istringstream lines(printed.output);
    for (std::string line; std::getline(lines, line);) {
        const bool names_file = line.find(directory_.string()) != line.npos;
        EXPECT_TRUE(names_file || line.size() <= 80) << line;
    }
}

}  // namespace
}  // namespace hundredweight
