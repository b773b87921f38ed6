// What cwt prints and how it ends, for its user's slips and for files that cannot be read.
#include <nlohmann/json.hpp>

#include "reference/samples/sample_data.h"
#include "support/table.h"
#include "support/tariff_fixture.h"

namespace hundredweight {
namespace {

namespace fs = std::filesystem;
struct CommandOutput {
    int exit_code;
    std::string output, complaints;
};

class CommandTest : public TariffTest {
 protected:
    CommandTest() { samples::WriteSampleData(directory_); }

    CommandOutput Run(const std::string& arguments) const {
        const fs::path complaints = directory_ / "complaints";
        const std::string command = HWT_CWT " " + arguments + " 2>" + complaints.string();
        FILE* const pipe = popen(command.c_str(), "r");
        CommandOutput printed;
        for (int byte; (byte = fgetc(pipe)) != EOF;) printed.output += static_cast<char>(byte);
        printed.exit_code = pclose(pipe) / HWT_EXIT_CODE_UNIT;
        printed.complaints = FileContent(complaints);
        return printed;
    }

    std::string Sample() const {
        return (directory_ / "shipments" / "01-deficit-and-discount.json").string();
    }

    /// The first sample shipment with changes.
    std::string Shipment(const std::string& changes) const {
        nlohmann::json shipment = nlohmann::json::parse(FileContent(Sample()));
        shipment.merge_patch(nlohmann::json::parse(changes));
        WriteFile("shipments/changed.json", shipment.dump());
        return (directory_ / "shipments" / "changed.json").string();
    }

    void ExpectBroken(const std::string& arguments, const std::string& complaint) const {
        const CommandOutput printed = Run(arguments);
        EXPECT_EQ(printed.exit_code, 2) << arguments;
        EXPECT_EQ(printed.complaints.substr(0, 5), "cwt: ");
        EXPECT_NE(printed.complaints.find(complaint), std::string::npos) << printed.complaints;
        EXPECT_EQ(std::ranges::count(printed.complaints, '\n'), 1) << printed.complaints;
    }
};

TEST_F(CommandTest, SpellingsThatAreUnmistakableAreRatedAsTheirPlainForms) {
    const struct {
        const char *written, *plain;
    } rows[] = {
        {R"({"origin": {"zip": 30303}})", "{}"},
        {R"({"origin": {"zip": " 30303-1234"}})", "{}"},
        {R"({"lines": [{"class": 77.5, "weight": 900.0}]})",
         R"({"lines": [{"class": "77", "weight": 900}]})"},
        {R"({"lines": [{"class": "92.5", "weight": 9}, {"class": 50, "weight": 1}]})",
         R"({"lines": [{"class": "92", "weight": 9}, {"class": "50", "weight": 1}]})"},
        {R"({"origin": {"zip": 60601, "city": "Chicago", "state": null},
             "destination": {"zip": "m5h 2n2", "city": "Toronto", "state": null}})",
         R"({"origin": {"zip": "60601", "city": "Chicago", "state": "IL"},
             "destination": {"zip": "M5H2N2", "city": "Toronto", "state": "ON"}})"},
    };
    for (const auto& [written, plain] : rows) {
        const CommandOutput as_written = Run("rate " + Shipment(written));
        const CommandOutput as_plain = Run("rate " + Shipment(plain));
        EXPECT_EQ(as_written.exit_code, 0) << as_written.complaints;
        EXPECT_EQ(as_written.output, as_plain.output);
        EXPECT_EQ(as_plain.output.find(" \n"), std::string::npos) << as_plain.output;
    }
}

TEST_F(CommandTest, MessagesAreExplainedByTheirCodesAndStatusesAsTheEngines) {
    const CommandOutput printed = Run("message 374 999 0113 116");
    EXPECT_EQ(printed.exit_code, 1);
    EXPECT_NE(printed.complaints.find("999"), std::string::npos) << printed.complaints;
    std::size_t at = 0;
    for (const char* part :
         {"374: Error reading SET file.\n\nThe file `NAME.SET` (settings of the set) is shorter",
          " than its record of 283\nbytes.\n\n", "`settings.json`.\n\n", "Words of the engine\n",
          "116: Nothing to Print\n\nNeither"}) {
        at = printed.output.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << printed.output;
    }
    ExpectBroken("message 12x", "12x");
}

TEST_F(CommandTest, RefusalsTellAllThatIsWrongWithItsPlaceAndWhatIsRight) {
    const struct {
        const char* changes;
        std::vector<std::string> complaints;
    } rows[] = {
        {R"({"factor": 10})",
         {"factor \"10\": Invalid Factor. (code 513); possible: 0.0001 to 9."}},
        {R"({"factor": 9.99999})", {"(code 513)"}},
        {R"({"factor": 1.00001})", {"(code 513)"}},
        {R"({"factor": 0})", {"(code 513)"}},
        {R"({"discount": {"percent": 45.555}})", {"discount.percent: a number of at most 2"}},
        {R"({"discount": {"percent": 100, "floor": 1000}})",
         {"discount.percent: Discount Cannot", "discount.floor: Floor Cannot"}},
        {R"({"discount": {"percent": -5, "flat_percent": -1, "floor": -1}})",
         {"discount.percent: Discount Cannot Exceed 99.99 (code 118); possible: 0 to 99.98",
          "(code 118); possible: 0 to 99.99\n", "(code 119); possible: 0 to 999.99"}},
        {R"({"discount": {"percent": 99.99}})", {"(code 118); possible: 0 to 99.98"}},
        {R"({"origin": {"territory": "Q"}, "profile": "default"})",
         {"origin.territory \"Q\"", "possible: Default"}},
        {R"({"destination": {"intrastate": true}})", {"destination.intrastate: unknown key"}},
        {R"({"surcharge": {"low_percent": 1e39, "break_index": 1}})", {"surcharge.low_percent"}},
        {R"({"orign": 1, "factor": "x", "destination": null, "lines": [{"class": "70"}]})",
         {"orign: unknown key; possible: origin", "factor: a number is wanted",
          "destination: missing", "lines[0].weight: missing"}},
        {R"({"destination": {"zip": "6060A"}, "lines": [{"class": "71", "weight": 9}]})",
         {"destination.zip \"6060A\": Invalid Destination ZIP Code. (code 102); possible: a ZIP",
          "lines[0].class \"71\": Invalid Class. (code 105); possible: 500, 400"}},
        {R"({"origin": {"zip": "99501"}})", {"Alaska, Hawaii and Puerto Rico"}},
        {R"({"origin": {"zip": "\u001b[31m"}})", {"origin.zip \"\u241b[31M\""}},
        {R"({"profile": "Northest"})", {"profile \"Northest\"", "(code 127); possible: Northeast"}},
        {R"({"tariff": "SMPLNONE"})", {"Tariff not on file"}},
        {R"({"origin": {"city": "Nowhere"}})", {"possible: Atlanta GA"}},
        {R"({"lines": [{"class": "50", "weight": 999999}, {"class": "50", "weight": 1}]})",
         {"Weight"}},
    };
    for (const auto& [changes, complaints] : rows) {
        const std::string shipment = Shipment(changes);
        const CommandOutput rated = Run("rate " + shipment);
        EXPECT_EQ(rated.exit_code, 1) << changes;
        EXPECT_EQ(rated.output, "");
        for (const std::string& complaint : complaints) {
            EXPECT_NE(rated.complaints.find(complaint), std::string::npos) << rated.complaints;
        }
        const CommandOutput checked = Run("check " + shipment);
        EXPECT_EQ(checked.complaints, rated.complaints);
        EXPECT_EQ(checked.exit_code, 1);
    }
    std::string many;
    for (int i = 0; i < 2000; ++i) many += "{},";
    const std::string key = '"' + std::string(70, 'k') + "\": 1";
    const struct {
        std::string text, complaint;
    } texts[] = {
        {"", "line 1, column 1: this is no JSON"},
        {"{\n \"factor\": }", "line 2, column 12: this is no JSON"},
        {"{\"factor\": 1e999}", "a number is too large"},
        {"[1]", "a JSON object is wanted"},
        {std::string("{}\0 ", 4), "line 1, column 3: a zero byte"},
        {std::string(1000, '['), "too many levels"},
        {R"({"origin": {"zip": 1, "zip": 1}, "lines": [{"class": 1, "class": 1}]})",
         "origin.zip: the key is there twice"},
        {"{" + key + "," + key + "}", std::string(64, 'k') + "...: the key is there twice"},
        {"{\"lines\": [" + many + "{}]}", "more keys and values"},
        {std::string((8 << 20) + 1, ' '), "more than 8 MiB"},
    };
    for (const auto& [text, complaint] : texts) {
        WriteFile("shipments/text.json", text);
        const CommandOutput printed =
            Run("rate " + (directory_ / "shipments" / "text.json").string());
        EXPECT_EQ(printed.exit_code, 1);
        EXPECT_NE(printed.complaints.find("text.json: " + complaint), std::string::npos)
            << printed.complaints;
        EXPECT_EQ(printed.complaints.find("json.exception"), std::string::npos);
    }
}

TEST_F(CommandTest, AFactorOfTheDefaultsIsRefusedLikeOneOfTheShipment) {
    fs::path defaults = directory_ / "SAMPLE.DEF";
    std::string record = FileContent(defaults);
    const float rate = 18.5F;
    const int16_t on = 1;
    memcpy(record.data() + 10, &on, sizeof on);
    memcpy(record.data() + 35, &rate, sizeof rate);
    WriteFile("SAMPLE.DEF", record);
    const CommandOutput printed = Run("rate " + Sample());
    EXPECT_EQ(printed.exit_code, 1);
    EXPECT_NE(printed.complaints.find("defaults \"1\": Invalid Factor. (code 513)"),
              std::string::npos)
        << printed.complaints;
}

TEST_F(CommandTest, WhatIsThereButCannotBeReadIsNamedWithTheReason) {
    for (const char* name : {"SAMPLE.DEF", "SAMPLE.ZMC", "SAMPLE.DIS", "sample.mef"}) {
        const fs::path file = directory_ / name, aside = directory_ / "aside";
        const bool there = exists(file);
        if (there) fs::rename(file, aside);
        fs::create_directory(file);
        ExpectBroken("rate " + Sample(), std::string(name) + ": this is no regular file");
        fs::remove(file);
        if (there) fs::rename(aside, file);
    }
    const std::string shipment = (directory_ / "shipments" / "16-whole-road.json").string();
    for (const auto& [name, complaint] : {std::pair{"SAMPLE.ZMC", "it ends within a record"},
                                          {"SAMPLE.SC", "it has 3986 of the 3996 bytes"},
                                          {"SAMPLE.LVL", "it ends within a record"},
                                          {"PROFILE.FIL", "it ends within a record"}}) {
        const std::string content = FileContent(directory_ / name);
        WriteFile(name, content.substr(0, content.size() - 10));
        ExpectBroken("rate " + shipment, complaint);
        ExpectBroken("inspect " + directory_.string(), complaint);
        WriteFile(name, content + "\x1A");
        EXPECT_EQ(Run("rate " + shipment).exit_code, 0) << name;
        WriteFile(name, content);
    }
    for (const char* name : {"tolvex-lanes.txt", "servgd-points.txt"}) {
        const std::string content = FileContent(directory_ / name);
        WriteFile(name, content + "x|y\n");
        ExpectBroken("rate " + shipment, std::string(name) + ":");
        ExpectBroken("inspect " + directory_.string(), std::string(name) + ":");
        WriteFile(name, content);
    }
}

TEST_F(CommandTest, SlipsOfTheCommandLineAreToldWithTheNearestName) {
    ExpectBroken("rat x", "unknown command \"rat\", did you mean rate?");
    ExpectBroken("help rat", "unknown command \"rat\", did you mean rate?");
    EXPECT_EQ(Run("help rate").output, Run("rate --help").output);
    ExpectBroken("rate x --jsno", "unknown argument \"--jsno\", did you mean --json?");
    ExpectBroken("rate", "SHIPMENT is required");
    ExpectBroken("rate none.json", "none.json: No such file or directory");
    ExpectBroken("states 30303 --set NONE", "no tariff set NONE in ");
    ExpectBroken("states 30303 --data " + (directory_ / "shipments").string(), "no tariff set");
    ExpectBroken("sample " + directory_.string(), "is there already; --force");
    ExpectBroken("build", "FOLDER is wanted");
    ExpectBroken("build --new tariff data", "FOLDER excludes --new");
    ExpectBroken("build --new tariff --schema", "excludes");
    WriteFile("classes.csv", "class\n");
    ExpectBroken("build --new " + directory_.string(), "classes.csv: is there already");
    EXPECT_FALSE(fs::exists(directory_ / "settings.json"));
}

TEST_F(CommandTest, TextsOfTheDataAreDecodedAndDoNotActOnTerminals) {
    std::string profiles = FileContent(directory_ / "PROFILE.FIL");
    Put(profiles, 0, std::string("Z\xFCrich\x1B[2J\0", 11));
    WriteFile("PROFILE.FIL", profiles);
    const std::string data = " --data " + directory_.string();
    EXPECT_EQ(Run("profiles" + data).output.substr(0, 13), "Z\u00fcrich\u241b[2J");
    const CommandOutput json = Run("profiles --json" + data);
    EXPECT_EQ(nlohmann::json::parse(json.output)["profiles"][0], "Z\u00fcrich\u241b[2J");
    Put(profiles, 0, std::string("Z\xFCrich\0\0\0\0\0", 11));
    WriteFile("PROFILE.FIL", profiles);
    WriteFile("shipments/umlaut.json",
              nlohmann::json::parse(FileContent(Sample()))
                  .patch(nlohmann::json::parse(
                      R"([{"op": "add", "path": "/profile", "value": "Z\u00fcrich"}])"))
                  .dump());
    EXPECT_EQ(Run("rate " + (directory_ / "shipments" / "umlaut.json").string()).exit_code, 0);
}

TEST_F(CommandTest, EnteredDiscountsGoBeforeThoseOfAProfile) {
    const nlohmann::json whole_road =
        nlohmann::json::parse(FileContent(directory_ / "shipments" / "16-whole-road.json"));
    for (const auto& [discount, printed] :
         {std::pair{"{}", "Discount 42.50%"}, {R"({"percent": 10})", "Discount 10.00%"}}) {
        nlohmann::json shipment = whole_road;
        if (!nlohmann::json::parse(discount).empty())
            shipment["discount"] = nlohmann::json::parse(discount);
        WriteFile("shipments/profile.json", shipment.dump());
        const CommandOutput bill =
            Run("rate " + (directory_ / "shipments" / "profile.json").string());
        EXPECT_NE(bill.output.find(printed), std::string::npos) << bill.output;
        EXPECT_NE(bill.output.find("85*"), std::string::npos) << "a class that is rated as another";
    }
}

TEST_F(CommandTest, EveryCommandLooksUpwardForTheData) {
    const fs::path before = fs::current_path();
    fs::current_path(directory_ / "shipments");
    EXPECT_EQ(Run("states 30303 30303-1234 m5h2n2").output, "30303 GA\n30303 GA\nM5H2N2 ON\n");
    EXPECT_EQ(Run("profiles").exit_code, 0);
    EXPECT_EQ(Run("inspect").exit_code, 0);
    EXPECT_EQ(Run("rate - <01-deficit-and-discount.json").output, Run("rate " + Sample()).output);
    fs::current_path(before);
}

}  // namespace
}  // namespace hundredweight
