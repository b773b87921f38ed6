// What a batch keeps of its work, and what a later run makes of it.
#include "batch/batch_output.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "batch/crew_messages.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

const Json kTerms = {{"engine", "tolvex"},
                     {"part", nullptr},
                     {"files", {{"SAMPLE.SET", "283 bytes 1"}, {"SAMPLE.DIS", "605 bytes 2"}}}};

class BatchOutputTest : public ::testing::Test {
 protected:
    BatchOutputTest() { fs::create_directory(directory_); }
    ~BatchOutputTest() override { fs::remove_all(directory_); }

    fs::path Path(const char* name) const { return directory_ / name; }

    std::string Content(const char* name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void Write(const char* name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
    }

    std::unique_ptr<BatchOutput> Open(bool resume) const {
        return MakeOutputFile({Path("out"), resume, kTerms, [this] {
                                   if (is_changed_) throw std::runtime_error("the data changed");
                               }});
    }

    /// Why it does not open; empty when it does.
    std::string Refusal(bool resume) const {
        try {
            Open(resume);
            return "";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    /// Leaves a run that was stopped after "first".
    void StopAfterFirst() const {
        const auto output = Open(false);
        output->Write("first\n");
        output->Note({2, 77, 0, {}});
        EXPECT_EQ(output->Stop().output_size, 6U);
    }

    const fs::path directory_ = fs::temp_directory_path() / ("output" + std::to_string(getpid()));
    bool is_changed_ = false;
};

TEST_F(BatchOutputTest, AStoppedRunGoesOnBehindWhatItKept) {
    StopAfterFirst();
    EXPECT_FALSE(fs::exists(Path("out")));
    Write("out.partial", Content("out.partial") + "lost in a kill");
    EXPECT_NE(Refusal(false), "") << "without --resume";
    {
        const auto output = Open(true);
        EXPECT_FALSE(output->is_whole());
        EXPECT_EQ(output->begun().next_row, 2U);
        EXPECT_EQ(output->begun().digest, 77U);
        output->Write("second\n");
        output->Note({3, 78, 0, {}});
        EXPECT_NE(Refusal(true), "") << "another run is at work";
        output->Finish();
        EXPECT_TRUE(output->is_whole());
    }
    EXPECT_EQ(Content("out"), "first\nsecond\n");
    EXPECT_FALSE(fs::exists(Path("out.partial")));
    EXPECT_NE(Refusal(false), "") << "it is there already";
    const auto whole = Open(true);
    EXPECT_TRUE(whole->is_whole());
    EXPECT_EQ(whole->begun().next_row, 3U);
    EXPECT_EQ(whole->begun().output_size, 13U);
}

TEST_F(BatchOutputTest, WhatIsNotOfTheRunIsLeftAlone) {
    for (const char* content : {"", "rows of somebody"}) {
        Write("out", content);
        EXPECT_NE(Refusal(false), "");
        EXPECT_NE(Refusal(true), "");
        EXPECT_EQ(Content("out"), content);
        EXPECT_FALSE(fs::exists(Path("out.journal")));
    }
    fs::remove(Path("out"));
    StopAfterFirst();
    Write("out", "first\n");
    EXPECT_NE(Refusal(true), "") << "two outputs of one run";
    fs::remove(Path("out"));
    const std::string journal = Content("out.journal");
    Write("out.partial", "first");
    EXPECT_NE(Refusal(true), "") << "rows are missing";
    Write("out.partial", "first\n");
    EXPECT_EQ(Refusal(true), "");
    for (const char* size : {"first", "first\nmore"}) {
        fs::remove(Path("out.partial"));
        Write("out", size);
        EXPECT_NE(Refusal(true), "") << "a whole file of another size";
        EXPECT_EQ(Content("out"), size);
    }
    EXPECT_EQ(Content("out.journal"), journal);
}

TEST_F(BatchOutputTest, NothingIsKeptThatTheDataDoNotConfirm) {
    {
        const auto output = Open(false);
        output->Write("rows");
        is_changed_ = true;
        EXPECT_THROW(output->Stop(), std::runtime_error);
        EXPECT_THROW(output->Finish(), std::runtime_error);
    }
    EXPECT_TRUE(fs::is_empty(directory_)) << "nothing is left of a run that has kept nothing";
    is_changed_ = false;
    StopAfterFirst();
    {
        const auto output = Open(true);
        output->Write("more");
        output->Note({3, 78, 0, {}});
        is_changed_ = true;
        EXPECT_THROW(output->Finish(), std::runtime_error);
    }
    is_changed_ = false;
    EXPECT_EQ(Open(true)->begun().next_row, 2U);
    EXPECT_EQ(Content("out.partial"), "first\n");
}

TEST_F(BatchOutputTest, AJournalIsReadUpToItsLastWholeLine) {
    Progress progress;
    progress.next_row = 9, progress.digest = ~std::uint64_t{0},
    progress.output_size = 5'000'000'000;
    Row refused;
    refused.outcome = Refusals{{"", "Ung\u00fcltig \"1\"", 105}};
    progress.tally.Count(refused);
    const fs::path path = Path("journal");
    Journal(path, kTerms, false).Keep(progress);
    const std::string whole = Content("journal");
    const std::string kept = progress.Text() + '\n', first = whole.substr(0, whole.find('\n') + 1);
    EXPECT_EQ(whole, first + kept);
    const struct {
        std::string content, kept, left;
    } cases[] = {
        {whole, kept, whole},
        {whole + kept.substr(0, 20), kept, whole},
        {whole + "x", kept, whole},
        {first, "", first},
        {first + kept.substr(0, kept.size() - 1), "", first},
        {first.substr(0, 9), "", first},
        {"", "", first},
    };
    for (const auto& test : cases) {
        Write("journal", test.content);
        {
            const Journal journal(path, kTerms, false);
            EXPECT_EQ(journal.kept() ? journal.kept()->Text() + '\n' : "", test.kept);
        }
        EXPECT_EQ(Content("journal"), test.left);
    }
    for (const std::string& other : {first + "{}\n", first + "x\n", std::string("a,b\n1,2\n")}) {
        Write("journal", other);
        EXPECT_THROW(Journal(path, kTerms, false), std::runtime_error) << other;
        EXPECT_EQ(Content("journal"), other);
        EXPECT_FALSE(Journal(path, kTerms, true).kept());
        EXPECT_EQ(Content("journal"), first);
    }
}

TEST_F(BatchOutputTest, TermsOfTwoRunsDifferByTheFirstThatDoes) {
    const std::pair<const char*, const char*> cases[] = {
        {"{}", ""},
        {R"({"engine": "other"})", "engine"},
        {R"({"part": "1/2"})", "part"},
        {R"({"timeout": 5})", "timeout"},
        {R"({"files": {"SAMPLE.SET": "283 bytes 3"}})", "SAMPLE.SET"},
        {R"({"files": {"SAMPLE.DIS": null}})", "SAMPLE.DIS"},
        {R"({"files": {"SAMPLE.ZMC": "1 bytes 1"}})", "SAMPLE.ZMC"},
    };
    for (const auto& [patch, named] : cases) {
        Json now = kTerms;
        const Json changes = Json::parse(patch);
        now.merge_patch(changes);
        if (changes.contains("part")) now["part"] = changes["part"];
        try {
            RequireSameTerms(kTerms, now);
            EXPECT_STREQ(named, "") << patch;
        } catch (const std::runtime_error& error) {
            EXPECT_STRNE(named, "") << error.what();
            EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
        }
    }
}

TEST_F(BatchOutputTest, JobsAndAnswersCrossToAWorkerWhole) {
    Row rated, failed;
    rated.outcome = Bill();
    failed.outcome = Failure{"it ended"};
    Job job;
    job.packed = false;
    job.block.first_row = 5'000'000'000;
    job.block.text = std::string("{\n}\n\0x\n", 7);
    job.block.lengths = {4, 3, 0};
    job.known[0] = {7, {}, "a\n{}\nb"};
    job.known[0].tally.Count(rated);
    job.known[2] = {9, {}, ""};
    job.known[2].tally.Count(failed);
    const Job read = ReadJob(WriteJob(job));
    EXPECT_EQ(read.packed, job.packed);
    EXPECT_EQ(read.block.first_row, job.block.first_row);
    EXPECT_EQ(read.block.text, job.block.text);
    EXPECT_EQ(read.block.lengths, job.block.lengths);
    ASSERT_EQ(read.known.size(), 2U);
    for (const auto& [place, answer] : job.known) {
        EXPECT_EQ(read.known.at(place).first_row, answer.first_row);
        EXPECT_EQ(read.known.at(place).bytes, answer.bytes);
        EXPECT_EQ(read.known.at(place).tally.Json(), answer.tally.Json());
    }
}

}  // namespace
}  // namespace cwt
