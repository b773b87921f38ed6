// What a rating process answers to requests, one session behind all of them.
#include "server/desk.h"

#include <fmt/core.h>

#include <cstdio>

#include "batch/rater.h"
#include "reference/samples/generated_shipments.h"
#include "session/live_files.h"
#include "support/explained_samples.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;
class DeskTest : public ExplainedSamples {
 protected:
    /// The answer, both of them sent between processes.
    DeskReply Ask(const DeskRequest& request) {
        if (!session_) session_.emplace(Sources{.data = directory_});
        const DeskReply reply = AnswerRequest(*session_, ReadRequest(WriteRequest(request)));
        const DeskReply read = ReadReply(WriteReply(reply));
        EXPECT_EQ(read.body, reply.body);
        EXPECT_EQ(read.tally.Json(), reply.tally.Json());
        return read;
    }

    /// What the command writes to standard output.
    std::string Printed(const std::string& arguments) const {
        const std::string printed = (directory_ / "printed").string();
        const std::string command =
            fmt::format(HWT_CWT " {} >{} 2>{}.errors", arguments, printed, printed);
        if (std::system(command.c_str()) == -1) ADD_FAILURE() << command;
        return Content("printed");
    }

    std::string Shipment(const std::string& name) const {
        return (directory_ / "shipments" / (name + ".json")).string();
    }

    std::optional<Session> session_;
};

TEST_F(DeskTest, AnswersAreWhatTheCommandsPrint) {
    const struct {
        DeskRequest request;
        const char* command;
    } of_shipments[] = {
        {{"rate", {}, {}}, "rate"},
        {{"rate", {{"explain", "1"}}, {}}, "rate --explain"},
        {{"check", {}, {}}, "check"},
    };
    for (const char* name : {"01-deficit-and-discount", "13-destination-city-unknown",
                             "16-whole-road", "17-many-faults", "09-all-kinds"}) {
        for (const auto& [request, command] : of_shipments) {
            SCOPED_TRACE(fmt::format("{} {}", command, name));
            DeskRequest asked = request;
            asked.body = Content(fmt::format("shipments/{}.json", name));
            const DeskReply reply = Ask(asked);
            const std::string printed =
                Printed(fmt::format("{} --json {}", command, Shipment(name)));
            EXPECT_EQ(reply.tally.rows(), 1U);
            EXPECT_EQ(reply.tally.rated(), reply.status == 200 ? 1U : 0U);
            if (reply.status == 200) {
                EXPECT_EQ(reply.body, printed);
                continue;
            }
            const nlohmann::json refusals = nlohmann::json::parse(printed);
            const nlohmann::json problem = nlohmann::json::parse(reply.body);
            EXPECT_EQ(problem["refusals"], refusals["refusals"]);
            EXPECT_EQ(problem["id"], refusals["id"]);
            EXPECT_EQ(reply.type, kProblemType);
            EXPECT_EQ(reply.status, 422);
        }
    }
    const struct {
        DeskRequest request;
        const char* command;
    } look_ups[] = {
        {{"state", {{"code", "m5h 2n2"}}, {}}, "states \"m5h 2n2\""},
        {{"profiles", {}, {}}, "profiles"},
        {{"profile", {{"name", "Northeast"}}, {}}, "profiles Northeast"},
        {{"profile", {{"name", "Default"}}, {}}, "profiles Default"},
    };
    for (const auto& [request, command] : look_ups) {
        EXPECT_EQ(Ask(request).body,
                  Printed(fmt::format("{} --json --data {}", command, directory_.string())));
    }
}

TEST_F(DeskTest, BlocksOfRowsAreThoseOfTheWholeBatch) {
    std::vector<std::string> rows;
    hundredweight::samples::WriteGeneratedRows(
        60, [&](const std::string& row) { rows.push_back(row); });
    const std::vector<std::string> table = {"3,30303,60601,70,500,\"a, b\"\r\n",
                                            "4,30303,6060A,70,500,\r\n", "5,30303\r\n"};
    const std::string header = "id,origin_zip,destination_zip,class_1,weight_1,cost centre\r\n";
    const struct {
        BatchForms forms;
        std::string reads;
        const std::vector<std::string>& rows;
    } cases[] = {{{"ndjson", "ndjson", "", {}}, "in.ndjson", rows},
                 {{"ndjson", "csv", "", {}}, "in.ndjson", rows},
                 {{"csv", "csv", header, {"cost centre"}}, "in.csv", table},
                 {{"csv", "ndjson", header, {"cost centre"}}, "in.csv", table}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.forms.from + " to " + test.forms.to);
        constexpr std::size_t kBlock = 25;
        std::string content = test.forms.header, answers;
        Tally tally;
        for (std::size_t first = 0; first < test.rows.size(); first += kBlock) {
            Block block;
            block.first_row = first + 1;
            for (std::size_t i = first; i < std::min(first + kBlock, test.rows.size()); ++i) {
                block.lengths.push_back(static_cast<std::uint32_t>(test.rows[i].size()));
                block.text += test.rows[i];
            }
            content += block.text;
            const DeskReply reply = Ask(BatchRequest(block, test.forms));
            answers += reply.body;
            tally.Add(reply.tally);
        }
        Write(test.reads, content);
        const std::string out = "out." + test.forms.to;
        fs::remove(directory_ / out);
        fs::remove(directory_ / (out + ".journal"));
        Printed(fmt::format("batch {} -o {} --data {}", (directory_ / test.reads).string(),
                            (directory_ / out).string(), directory_.string()));
        std::string expected = Content(out);
        if (test.forms.to == "csv") expected.erase(0, expected.find('\n') + 1);
        EXPECT_EQ(answers, expected);
        EXPECT_EQ(tally.rows(), test.rows.size());
        EXPECT_GT(tally.refused(), 0U);
    }
}

TEST_F(DeskTest, WhatCannotBeAnsweredIsAProblemOfItsKind) {
    constexpr const char* kTwice = R"({"id": "A7", "origin": {"zip": "30303"}, "lines": [],
        "destination": {"zip": "6", "zip": "60601"}})";
    const std::string sound = Content("shipments/02-minimum-charge.json");
    const struct {
        DeskRequest request;
        const char *kind, *detail;
    } cases[] = {
        {{"rate", {}, ""}, "not-a-shipment", "no JSON"},
        {{"rate", {}, "{\"origin\": "}, "not-a-shipment", "line 1, column"},
        {{"check", {}, "[{}]"}, "not-a-shipment", "a JSON object is wanted"},
        {{"curve", {}, "null"}, "not-a-shipment", "a JSON object is wanted"},
        {{"rate", {}, "{}"}, "refused", "destination: missing"},
        {{"check", {}, kTwice}, "refused", "destination.zip: the key is there twice; lines: "},
        {{"curve", {{"from", "0"}}, sound}, "bad-request", "1 to 999999"},
        {{"curve", {{"to", "1000000"}}, sound}, "bad-request", "1 to 999999"},
        {{"curve", {{"from", "9"}, {"to", "8"}}, sound}, "bad-request", "1 to 999999"},
        {{"curve", {{"to", "8 "}}, sound}, "bad-request", "1 to 999999"},
        {{"profile", {{"name", "Northeasd"}}, {}}, "unknown-profile", "possible: Northeast"},
        {{"profile", {{"name", "\xff"}}, {}}, "unknown-profile", "not found"},
        {{"state", {{"code", "00000"}}, {}}, "refused", "lies in no state"},
        {{"cities", {{"code", "no code"}}, {}}, "refused", "no postal code"},
        {{"classes", {{"tariff", "SMPLNATX"}}, {}}, "refused", "possible: SMPLNATL"},
        {{"classes", {{"tariff", "SMPL"}}, {}}, "refused", "no tariff of this name"},
    };
    for (const auto& [request, kind, detail] : cases) {
        SCOPED_TRACE(request.route + ": " + detail);
        const DeskReply reply = Ask(request);
        const nlohmann::json problem = nlohmann::json::parse(reply.body);
        EXPECT_EQ(problem["type"], fmt::format("urn:hundredweight:problem:{}", kind));
        EXPECT_EQ(problem["status"], reply.status);
        EXPECT_EQ(reply.type, kProblemType);
        EXPECT_NE(problem["detail"].get<std::string>().find(detail), std::string::npos)
            << problem["detail"];
    }
    EXPECT_EQ(nlohmann::json::parse(Ask({"rate", {}, kTwice}).body)["id"], "A7");
}

TEST_F(DeskTest, LookUpsTellWhatAShipmentMayHave) {
    const auto listed = [&](const DeskRequest& request, const char* list) {
        return nlohmann::json::parse(Ask(request).body)[list].dump();
    };
    // Seen from a lane that begins at the point, and from one that ends there.
    EXPECT_EQ(listed({"cities", {{"code", "30339-1234"}}, {}}, "cities"),
              R"(["Atlanta GA","Vinings GA"])");
    EXPECT_EQ(listed({"cities", {{"code", "75201"}}, {}}, "cities"), R"(["Dallas TX"])");
    EXPECT_EQ(listed({"cities", {{"code", "90210"}}, {}}, "cities"), "[]");
    EXPECT_EQ(listed({"classes", {}, {}}, "tariff"), "\"SMPLNATL\"");
    // A tariff of freight of all kinds takes each standard class too.
    const nlohmann::json kinds =
        nlohmann::json::parse(Ask({"classes", {{"tariff", "SMPLFAK1"}}, {}}).body);
    EXPECT_EQ(kinds["classes"].size(), 19U);
    EXPECT_EQ(kinds["classes"][0], "FAK");
    EXPECT_EQ(kinds["weight_breaks"][1], nlohmann::json({{"label", "M5C"}, {"weight", 500}}));
    // Without profiles there are no names, and rating goes on.
    session_.reset();
    fs::remove(directory_ / "PROFILE.FIL");
    EXPECT_EQ(listed({"profiles", {}, {}}, "profiles"), "[]");
    EXPECT_EQ(Ask({"profile", {{"name", "Northeast"}}, {}}).status, 404);
    EXPECT_EQ(Ask({"rate", {}, Content("shipments/02-minimum-charge.json")}).status, 200);
}

TEST_F(DeskTest, FilesThatRatingsReadAreWatched) {
    const struct {
        const char* name;
        bool is_live;
    } cases[] = {{"SAMPLE.ZMC", true},   {"PROFILE.FIL", true},       {"SAMPLE.ZP6", true},
                 {"SAMPLE.CMT", true},   {"Northeast.zp6", true},     {"SAMPLE.DIS", false},
                 {"rows.ndjson", false}, {"servgd-points.txt", false}};
    const Sources sources = {.data = directory_};
    {
        Session session(sources);
        session.Prepare();
        LiveFiles live(sources);
        // A rating by a profile changes nothing any more.
        session.Rate(Sample("02-minimum-charge", R"({"profile": "Northeast"})"), 0);
        EXPECT_EQ(live.Changed(), "");
    }
    for (const auto& [name, is_live] : cases) {
        LiveFiles live(sources);
        const std::string expected = is_live ? name : "";
        Write(name, Content(name) + " ");
        EXPECT_EQ(live.Changed(), expected);
        EXPECT_EQ(live.Changed(), expected) << "for good";
        LiveFiles later(sources);
        EXPECT_EQ(later.Changed(), "");
        fs::remove(directory_ / name);
        EXPECT_EQ(later.Changed(), expected) << "is gone";
    }
}

}  // namespace
}  // namespace cwt
