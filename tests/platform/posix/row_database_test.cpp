#include "batch/row_database.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "batch/row.h"

namespace cwt {
namespace {

constexpr int kRows = 120, kRowsInTransaction = 40, kNever = -1;
const std::vector<std::string> kPassed = {"note", "ROW"};

std::string EncodedRow(int number) {
    Row row;
    row.number = static_cast<std::uint64_t>(number);
    row.id = std::to_string(number % 7);
    // More than the database holds in memory, so that a lost transaction has reached the file.
    row.passed = {std::string(100000, 'n'), ""};
    if (number % 3 == 0) {
        row.outcome = Refusals{{"origin.zip", "Invalid", 101, "x", {"a", "b"}}};
    } else {
        Bill bill;
        bill.date = "01-02-2024";
        bill.lines.resize(2, {"70", "70", number, "12.34", "56.78"});
        bill.gross = bill.net = bill.total_due = std::to_string(number) + ".05";
        bill.discount_percent = "45.50";
        row.outcome = bill;
    }
    std::string encoded;
    MakeDatabaseForm(kPassed)->Append(encoded, row);
    return encoded;
}

/// Goes on with a batch to its end, or is killed before a row.
void Fill(const std::filesystem::path& path, int killed_before) {
    RowDatabase database(path.string(), kPassed);
    const std::string state = database.State();
    for (int row = state.empty() ? 1 : std::stoi(state) + 1; row <= kRows; ++row) {
        if (row == killed_before) std::raise(SIGKILL);
        database.Insert(EncodedRow(row));
        if (row % kRowsInTransaction == 0) database.Commit(std::to_string(row));
    }
    database.Finish();
}

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class RowDatabaseTest : public testing::Test {
 protected:
    RowDatabaseTest() {
        directory_ = std::filesystem::temp_directory_path() / ("rows" + std::to_string(getpid()));
        create_directory(directory_);
    }
    ~RowDatabaseTest() override { remove_all(directory_); }
    void SetUp() override {
        if (!HasDatabase()) GTEST_SKIP() << "this build has no SQLite";
    }

    std::filesystem::path directory_;
};

TEST_F(RowDatabaseTest, ABatchThatWasKilledMakesTheSameFile) {
    Fill(directory_ / "whole", kNever);
    const std::string whole = Content(directory_ / "whole");
    const auto broken = directory_ / "broken";
    for (const int killed_before : {1, kRowsInTransaction, kRowsInTransaction + 1, kRows, kNever}) {
        const pid_t child = fork();
        if (child == 0) {
            Fill(broken, killed_before);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(WIFSIGNALED(status), killed_before != kNever) << killed_before;
    }
    EXPECT_GT(whole.size(), kRows * 100000U);
    EXPECT_TRUE(Content(broken) == whole);
    EXPECT_TRUE(RowDatabase((directory_ / "whole").string(), kPassed).IsFinished());
}

TEST_F(RowDatabaseTest, WhatIsNoDatabaseOfTheBatchIsToldApart) {
    const std::string path = (directory_ / "rows").string();
    RowDatabase(path, {"note"}).Commit("1");
    EXPECT_THROW(RowDatabase(path, kPassed), std::runtime_error);
    RowDatabase database(path, {"note"});
    EXPECT_EQ(database.State(), "1");
    EXPECT_FALSE(database.IsFinished());
    database.Insert([] {
        std::string encoded;
        MakeDatabaseForm({"note"})->Append(encoded, {1, "", Failure{"it ended"}, {}});
        return encoded;
    }());
    database.Finish();
    EXPECT_THROW(database.Commit("2"), std::runtime_error);
    std::ofstream(directory_ / "text") << std::string(5000, 'x');
    EXPECT_THROW(RowDatabase((directory_ / "text").string(), {}), std::runtime_error);
    EXPECT_THROW(RowDatabase((directory_ / "none" / "rows").string(), {}), std::runtime_error);
}

}  // namespace
}  // namespace cwt
