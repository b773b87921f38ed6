// cwt batch as its users run it, with partners that crash, kills, interrupts and full disks.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <nlohmann/json.hpp>
#include <random>

#include "batch/row.h"
#include "batch/row_database.h"
#include "reference/samples/generated_shipments.h"
#include "reference/samples/sample_data.h"
#include "session/messages.h"
#include "session/session.h"
#include "shipment/shipment_json.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

class BatchTest : public testing::Test {
 protected:
    BatchTest()
        : before_(fs::current_path()),
          directory_(fs::temp_directory_path() / fmt::format("batch{}", getpid())) {
        hundredweight::samples::WriteSampleData(directory_);
        fs::current_path(directory_);
    }
    ~BatchTest() override {
        fs::current_path(before_);
        fs::remove_all(directory_);
    }

    static void Write(const char* name, const std::string& text) {
        std::ofstream(name, std::ios::binary) << text;
    }

    static std::string Content(const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static void WriteRows(int count) {
        std::string rows;
        hundredweight::samples::WriteGeneratedRows(count,
                                                   [&](const std::string& row) { rows += row; });
        Write("rows.ndjson", rows);
    }

    /// Runs the command, with the shell's other words around it. Result: its exit code.
    static int Run(const std::string& arguments, const std::string& before = "") {
        const std::string command = before + HWT_CWT " batch " + arguments + " 2>said";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    /// The same, but does something to it when a file has so many bytes.
    static int RunUntil(const std::function<void(pid_t)>& act, const std::string& file,
                        std::uintmax_t bytes, const std::string& arguments) {
        const pid_t process = fork();
        if (process == 0) {
            const std::string command = "exec " HWT_CWT " batch " + arguments + " 2>said";
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        int status = 0;
        for (bool sent = false; waitpid(process, &status, sent ? 0 : WNOHANG) == 0;) {
            std::error_code error;
            const std::uintmax_t size = fs::file_size(file, error);
            sent = !error && size >= bytes;
            if (sent) act(process);
            usleep(1000);
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    static std::function<void(pid_t)> Send(int signal) {
        return [=](pid_t process) { kill(process, signal); };
    }

    static void ExpectSaid(const std::string& text) {
        const std::string said = Content("said");
        EXPECT_NE(said.find(text), std::string::npos) << said;
    }

    static std::vector<nlohmann::json> Rows(const std::string& name) {
        std::vector<nlohmann::json> rows;
        std::ifstream file(name);
        for (std::string line; std::getline(file, line);) {
            rows.push_back(nlohmann::json::parse(line));
        }
        return rows;
    }

    const fs::path before_, directory_;
};

TEST_F(BatchTest, RowsAreThoseOfOneSessionHoweverTheyAreSpread) {
    WriteRows(700);
    Write("rows.ndjson", "\xEF\xBB\xBF" + Content("rows.ndjson") + "\n{\"id\": 7}\nnothing");
    std::string expected;
    CollectMessageBoxes();
    Session session({.data = directory_});
    const auto form = MakeNdjsonForm({});
    std::ifstream file("rows.ndjson");
    file.ignore(3);
    std::uint64_t number = 0;
    for (std::string line; std::getline(file, line);) {
        Shipment shipment;
        Row row;
        row.number = ++number;
        Refusals refusals = ReadShipmentJson(line, shipment);
        row.id = shipment.id;
        row.outcome = refusals;
        if (refusals.empty()) {
            std::visit([&](auto& outcome) { row.outcome = outcome; },
                       *std::make_unique<Outcome>(session.Rate(shipment, 0)));
        }
        form->Append(expected, row);
    }
    const std::string common = "rows.ndjson --jobs ";
    EXPECT_EQ(Run(common + "1 >one"), 1);
    EXPECT_TRUE(Content("one") == expected);
    EXPECT_EQ(Run("- --from ndjson --jobs 3 -o three.ndjson <rows.ndjson"), 1);
    EXPECT_TRUE(Content("three.ndjson") == expected);
    std::string parts;
    for (const char* part : {"1/3", "2/3", "3/3"}) {
        EXPECT_EQ(Run(common + "2 --part " + part + " >part"), 1);
        parts += Content("part");
    }
    EXPECT_TRUE(parts == expected);
    for (const auto& [pack, unpack, ending] :
         {std::tuple{"gzip -c", "gzip -dc", "gz"}, {"zstd -qc", "zstd -qdc", "zst"}}) {
        if (std::system(fmt::format("{} rows.ndjson >rows.packed", pack).c_str()) != 0) continue;
        const int exit_code =
            Run(fmt::format("rows.packed --from ndjson -o out.ndjson.{}", ending));
        if (exit_code == 2 && Content("said").find("this build has") != std::string::npos) continue;
        EXPECT_EQ(exit_code, 1) << Content("said");
        EXPECT_EQ(std::system(fmt::format("{} out.ndjson.{} >out", unpack, ending).c_str()), 0);
        EXPECT_TRUE(Content("out") == expected);
        fs::resize_file("rows.packed", fs::file_size("rows.packed") - 9);
        EXPECT_EQ(Run("rows.packed --from ndjson >out"), 2);
        ExpectSaid("packed file is cut");
    }
}

TEST_F(BatchTest, ARunOfNoRowsHasItsHeaderOnce) {
    Write("none.csv", "origin_zip,destination_zip,class_1,weight_1\n");
    EXPECT_EQ(Run("none.csv >none"), 0);
    const std::string header = Content("none");
    EXPECT_EQ(Run("none.csv --part 1/2 >none"), 0);
    EXPECT_EQ(Content("none"), header);
    EXPECT_EQ(Run("none.csv --part 2/2 >none"), 0);
    EXPECT_EQ(Content("none"), "");
    EXPECT_EQ(Run("none.csv -o out.csv"), 0);
    EXPECT_EQ(Run("none.csv -o out.csv --resume"), 0);
    ExpectSaid("is whole already");
    // As a run that was stopped before its first row leaves it.
    fs::rename("out.csv", "out.csv.partial");
    EXPECT_EQ(Run("none.csv -o out.csv --resume"), 0);
    EXPECT_EQ(Content("out.csv"), header);
}

TEST_F(BatchTest, KilledRunsEndWithTheSameBytes) {
    WriteRows(2000);
    std::minstd_rand random(static_cast<unsigned>(getpid()));
    for (const std::string name : {"out.ndjson", "out.csv", "out.csv.gz", "out.sqlite"}) {
        const std::string whole = "whole-" + name;
        const int exit_code = Run("rows.ndjson -o " + whole);
        if (exit_code == 2 && Content("said").find("this build has") != std::string::npos) continue;
        ASSERT_EQ(exit_code, 1) << Content("said");
        const std::string again = "rows.ndjson --resume -o " + name;
        for (int kills = 0; kills < 3; ++kills) {
            const std::uintmax_t bytes = fs::file_size(whole) * (random() % 90) / 100;
            EXPECT_EQ(RunUntil(Send(SIGKILL), name + ".partial", bytes, again), -SIGKILL);
            EXPECT_FALSE(fs::exists(name));
        }
        EXPECT_EQ(Run(again), 1) << Content("said");
        EXPECT_TRUE(Content(name) == Content(whole)) << name;
        EXPECT_FALSE(fs::exists(name + ".partial"));
        EXPECT_EQ(Run(again), 1);
        ExpectSaid("is whole already");
    }
}

TEST_F(BatchTest, AnInterruptAndAFullDiskLeaveWhatCanBeGoneOnWith) {
    WriteRows(4000);
    ASSERT_EQ(Run("rows.ndjson -o whole.ndjson --summary summary.json"), 1);
    const nlohmann::json summary = nlohmann::json::parse(Content("summary.json"));
    EXPECT_EQ(summary["rows"], 4000);
    const std::vector<nlohmann::json> rows = Rows("whole.ndjson");
    EXPECT_GT(summary["refused_by"].size(), 1);
    for (const nlohmann::json& kind : summary["refused_by"]) {
        const auto first = std::ranges::find_if(rows, [&](const nlohmann::json& row) {
            return row["status"] == "refused" && row["refusals"][0]["text"] == kind["text"];
        });
        ASSERT_NE(first, rows.end()) << kind;
        EXPECT_EQ(kind["first_row"], (*first)["row"]);
    }
    EXPECT_EQ(RunUntil(Send(SIGINT), "out.ndjson.partial", 1000000,
                       "rows.ndjson -o out.ndjson --progress"),
              2);
    ExpectSaid("with --resume goes on");
    ExpectSaid(" rows/s");
    EXPECT_EQ(Run("rows.ndjson -o out.ndjson"), 2);
    ExpectSaid("--resume goes on with it");
    EXPECT_EQ(Run("rows.ndjson -o out.ndjson --resume --summary summary.json", "ulimit -f 4000; "),
              2);
    ExpectSaid("File too large");
    EXPECT_EQ(nlohmann::json::parse(Content("summary.json"))["complete"], false);
    EXPECT_EQ(Run("rows.ndjson -o out.ndjson --resume --summary summary.json"), 1);
    EXPECT_TRUE(Content("out.ndjson") == Content("whole.ndjson"));
    EXPECT_EQ(nlohmann::json::parse(Content("summary.json"))["refused_by"], summary["refused_by"]);
    EXPECT_EQ(Run("rows.ndjson -o out.ndjson"), 2);
    ExpectSaid("is there already; remove it to rate anew, or --resume");
    for (const char* arguments : {"rows.ndjson >/dev/full", "--help >/dev/full"}) {
        EXPECT_EQ(Run(arguments), 2);
        ExpectSaid("standard output: No space left on device");
    }
    Write("none.ndjson", "");
    EXPECT_EQ(Run("none.ndjson"), 0);
    ExpectSaid("note: none.ndjson has no rows");
}

TEST_F(BatchTest, WhatAPartnerDoesToARowIsThatRowsAlone) {
    WriteRows(600);
    std::vector<nlohmann::json> shipments = Rows("rows.ndjson");
    const std::map<std::size_t, std::pair<const char*, const char*>> spoiled = {
        {1, {"Crash", "signal 9 (Killed)"}},
        {2, {"Exit", "exit code 2"}},
        {3, {"Unwind", "signal 6 (Aborted)"}},
        {4, {"Wander", ""}},
        {299, {"Tired", ""}},
        {300, {"Hang", "no answer in 1 seconds"}},
        {301, {"Tired", ""}},
        {302, {"Tired", ""}},
        {600, {"Crash", "signal 9 (Killed)"}},
    };
    std::string rows;
    for (std::size_t i = 1; i <= shipments.size(); ++i) {
        nlohmann::json& shipment = shipments[i - 1];
        if (spoiled.contains(i)) {
            shipment = {{"id", shipment["id"]},
                        {"origin", {{"zip", "30303"}, {"city", spoiled.at(i).first}}},
                        {"destination", {{"zip", "60601"}}},
                        {"tariff", "SMPLNATL"},
                        {"lines", {{{"class", "70"}, {"weight", 500}}}}};
        }
        rows += shipment.dump() + '\n';
    }
    Write("spoiled.ndjson", rows);
    Run("spoiled.ndjson >good");
    const std::vector<nlohmann::json> good = Rows("good");
    for (const char* jobs : {"1", "3"}) {
        EXPECT_EQ(
            Run(std::string("spoiled.ndjson --data . --timeout 1 --engine " HWT_UNRELIABLE_ENGINE
                            " >out --jobs ") +
                jobs),
            2);
        const std::vector<nlohmann::json> out = Rows("out");
        ASSERT_EQ(out.size(), shipments.size());
        for (std::size_t i = 1; i <= out.size(); ++i) {
            const nlohmann::json& row = out[i - 1];
            const std::string reason = spoiled.contains(i) ? spoiled.at(i).second : "";
            if (reason.empty()) {
                EXPECT_EQ(row, good[i - 1]);
            } else {
                EXPECT_EQ(row["status"], "failed");
                EXPECT_EQ(row["id"], fmt::format("G{}", i));
                EXPECT_NE(row["reason"].get<std::string>().find(reason), std::string::npos) << row;
            }
        }
        ExpectSaid("5 failed");
    }
    // A partner that answers nothing is not asked for every row.
    std::string crash = shipments[0].dump() + '\n', crashes;
    for (int i = 0; i < 100; ++i) crashes += crash;
    Write("crashes.ndjson", crashes);
    EXPECT_EQ(Run("crashes.ndjson -o out.ndjson --engine " HWT_UNRELIABLE_ENGINE), 2);
    ExpectSaid("16 rows failed and none was answered");
    EXPECT_FALSE(fs::exists("out.ndjson.partial"));
}

TEST_F(BatchTest, ARunIsNotGoneOnWithUnderOtherTerms) {
    WriteRows(3000);
    ASSERT_EQ(RunUntil(Send(SIGINT), "out.ndjson.partial", 1000000, "rows.ndjson -o out.ndjson"),
              2);
    const auto refuse = [](const std::string& arguments, const char* complaint) {
        EXPECT_EQ(Run(arguments + " -o out.ndjson --resume"), 2) << arguments;
        ExpectSaid(complaint);
    };
    refuse("rows.ndjson --engine " HWT_UNRELIABLE_ENGINE, "begun with engine \"tolvex\"");
    refuse("rows.ndjson --part 1/2", "begun with part");
    refuse("rows.ndjson --to csv", "begun with to \"ndjson\"");
    const std::string rates = Content("tolvex-rates.txt");
    Write("tolvex-rates.txt", rates + "\n");
    ASSERT_EQ(RunUntil([&](pid_t) { Write("tolvex-rates.txt", rates); }, "new.ndjson.partial",
                       1000000, "rows.ndjson -o new.ndjson"),
              2);
    ExpectSaid("tolvex-rates.txt: has changed since the run began");
    const std::string profiles = Content("PROFILE.FIL");
    ASSERT_EQ(RunUntil([&](pid_t) { Write("PROFILE.FIL", profiles + profiles); },
                       "again.ndjson.partial", 1000000, "rows.ndjson -o again.ndjson"),
              2);
    ExpectSaid("PROFILE.FIL: has changed since the run began");
    Write("PROFILE.FIL", profiles);
    Write("tolvex-rates.txt", rates + "\n");
    refuse("rows.ndjson", "tolvex-rates.txt is not what it was");
    Write("tolvex-rates.txt", rates);
    std::string rows = Content("rows.ndjson");
    rows[10] = '9';
    Write("other.ndjson", rows);
    refuse("other.ndjson", "are not those that were rated");
    EXPECT_EQ(Run("rows.ndjson --resume -o out.ndjson"), 1);
    refuse("other.ndjson", "are not those that were rated");
    Write("more.ndjson", Content("rows.ndjson") + "{}");
    refuse("more.ndjson", "has more rows now");
    fs::rename("more.ndjson", "own.journal");
    EXPECT_EQ(Run("own.journal --from ndjson --to ndjson -o own"), 2);
    ExpectSaid("the run writes this file");
}

TEST_F(BatchTest, InputThatIsNoneEndsTheRunBeforeItBegins) {
    const struct {
        const char *text, *arguments, *complaint;
    } cases[] = {
        {"", "in -o out.ndjson", "--from"},
        {"", "in --from csv -o out.csv", "header"},
        {"origin_zip;destination_zip\n", "in --from csv", ";"},
        {"origin_zip,destination_zip,class_1,weight_1,discont_percent\n", "in --from csv",
         "discount_percent"},
        {"{}", "in --from ndjson --part 0/3", "--part"},
        {"{}", "in --from ndjson -o in", "--to"},
        {"{}", "in --from ndjson --to csv -o in", "is there already"},
        {"{}", "- --from ndjson --part 1/2 <in", "standard input"},
        {"{}", "in --from ndjson --resume", "-o FILE"},
        {"{}", "in --from ndjson --engine none", "none"},
        {"{}", "none.ndjson", "none.ndjson: No such file"},
        {"{}", "in --from ndjson --summary SAMPLE.SET", "no summary"},
        {"{}", "in --from ndjson --summary ./in", "file of the rows"},
        {"{}", "in --from ndjson --to csv -o SAMPLE.SET --resume", "is there already, and not by"},
    };
    for (const auto& [text, arguments, complaint] : cases) {
        Write("in", text);
        EXPECT_EQ(Run(std::string(arguments) + " >/dev/null"), 2) << arguments;
        ExpectSaid(complaint);
        EXPECT_EQ(Content("in"), text);
        EXPECT_FALSE(fs::exists("out.csv") || fs::exists("out.csv.partial"));
    }
}

}  // namespace
}  // namespace cwt
