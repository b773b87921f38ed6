// Rows as they are cut from an input: none is lost, none is counted twice, however they lie.
#include "batch/row_source.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <stdexcept>

namespace cwt {
namespace {

constexpr auto kAllRows = std::numeric_limits<std::uint64_t>::max();
constexpr std::size_t kLongestRow = ShipmentReader::kLongestRow;

class RowSourceTest : public ::testing::Test {
 protected:
    ~RowSourceTest() override { std::filesystem::remove(path_); }

    RowSource Source(const std::string& content, Form form = Form::kNdjson) const {
        std::ofstream(path_, std::ios::binary) << content;
        return {path_.string(), form, {}};
    }

    /// The rows of the blocks that follow, which must be numbered one behind the other.
    static std::vector<std::string> Rows(RowSource& source, std::uint64_t first = 1,
                                         std::uint64_t end = kAllRows) {
        std::vector<std::string> rows;
        while (const auto block = source.Next(end)) {
            EXPECT_EQ(block->first_row, first + rows.size());
            std::size_t begin = 0;
            for (const std::size_t length : block->lengths) {
                rows.push_back(block->text.substr(begin, length));
                begin += length;
            }
            EXPECT_EQ(begin, block->text.size());
            EXPECT_EQ(block->next_row(), first + rows.size());
        }
        return rows;
    }

    const std::filesystem::path path_ =
        std::filesystem::temp_directory_path() /
        ("hundredweight-rows-" + std::to_string(std::random_device()()));
};

TEST_F(RowSourceTest, EveryLineIsARow) {
    using Texts = std::vector<std::string>;
    const std::string header = "origin_zip,destination_zip,class_1,weight_1,note\r\n";
    const struct {
        std::string content;
        Form form;
        Texts rows;
        std::uint64_t of_lines = 0, first_of_lines = 0;
    } cases[] = {
        {"", Form::kNdjson, {}},
        {"{}", Form::kNdjson, {"{}"}},
        {"{}\n\n {}\r\nx", Form::kNdjson, {"{}\n", "\n", " {}\r\n", "x"}},
        {"\xEF\xBB\xBF{}\n\xEF\xBB\xBF{}\n", Form::kNdjson, {"{}\n", "\xEF\xBB\xBF{}\n"}},
        {"\xEF\xBB\xBF", Form::kNdjson, {}},
        {header, Form::kCsv, {}},
        {"\xEF\xBB\xBF" + header + "1\n\n2", Form::kCsv, {"1\n", "\n", "2"}},
        {header + "1,\"a\nb\"\r\n2\n\"\n\n\",3\n",
         Form::kCsv,
         {"1,\"a\nb\"\r\n", "2\n", "\"\n\n\",3\n"},
         2,
         1},
        {header + "1\n2,\"a\n\"", Form::kCsv, {"1\n", "2,\"a\n\""}, 1, 2},
    };
    for (const auto& [content, form, rows, of_lines, first] : cases) {
        SCOPED_TRACE(content);
        RowSource source = Source(content, form);
        EXPECT_EQ(Rows(source), rows);
        EXPECT_EQ(source.rows_of_lines().rows, of_lines);
        EXPECT_EQ(source.rows_of_lines().first, first);
    }
    EXPECT_THROW(Source("", Form::kCsv), std::runtime_error);
    EXPECT_THROW(Source("{}\n", Form::kCsv), std::runtime_error);
}

TEST_F(RowSourceTest, ARunThatGoesOnReadsTheSameRowsFromThereOn) {
    constexpr std::uint64_t kRows = 1000;
    std::string content;
    for (std::uint64_t i = 1; i <= kRows; ++i) content += fmt::format("{{\"id\": {}}}\n", i);
    RowSource whole = Source(content);
    const std::vector<std::string> rows = Rows(whole);
    ASSERT_EQ(rows.size(), kRows);
    // Blocks end after so many rows; what a run has written ends with any of them.
    std::vector<std::pair<std::uint64_t, std::uint64_t>> ends;
    RowSource again = Source(content);
    while (const auto block = again.Next(kAllRows)) {
        EXPECT_LE(block->lengths.size(), 256U);
        ends.emplace_back(block->next_row(), block->digest);
    }
    ASSERT_EQ(ends.size(), 4U);
    EXPECT_EQ(again.SkipTo(kRows + 1), ends.back().second) << "nothing is left to skip";
    for (const auto& [next, digest] : ends) {
        RowSource later = Source(content);
        EXPECT_EQ(later.SkipTo(next), digest);
        const std::vector<std::string> rest(rows.begin() + static_cast<std::ptrdiff_t>(next) - 1,
                                            rows.end());
        EXPECT_EQ(Rows(later, next), rest);
        std::string changed = content;
        changed[3] = 'x';
        RowSource other = Source(changed);
        EXPECT_NE(other.SkipTo(next), digest) << "not the rows that were rated";
    }
    for (const std::uint64_t end : {1U, 2U, 256U, 257U, 258U, 1000U, 1001U, 2000U}) {
        RowSource part = Source(content);
        EXPECT_EQ(Rows(part, 1, end).size(), std::min(end - 1, kRows)) << end;
        EXPECT_EQ(part.SkipTo(std::min(end, kRows + 1)), part.SkipTo(1));
    }
    RowSource few = Source(content);
    EXPECT_THROW(few.SkipTo(kRows + 2), std::runtime_error);
}

TEST_F(RowSourceTest, ARowThatIsTooLongCostsNoOther) {
    const std::string after = "{\"id\": 2}\n";
    for (const std::size_t size : {kLongestRow - 1, kLongestRow, kLongestRow + 1,
                                   kLongestRow + (std::size_t{1} << 18) + 7, 3 * kLongestRow}) {
        const std::string row = std::string(size - 1, 'x') + '\n';
        const bool fits = size <= kLongestRow;
        for (const std::string& before : {std::string(), std::string("{}\n")}) {
            RowSource source = Source(before + row + after);
            std::vector<std::string> rows = Rows(source);
            ASSERT_EQ(rows.size(), before.empty() ? 2U : 3U) << size;
            EXPECT_EQ(rows.back(), after) << size;
            const std::string& found = rows[rows.size() - 2];
            EXPECT_EQ(found.size(), fits ? size : kLongestRow + 1) << "it can be refused";
        }
        RowSource last = Source(row.substr(0, size - 1));
        EXPECT_EQ(Rows(last).size(), 1U) << size;
    }
}

TEST_F(RowSourceTest, BlocksHoldNoMoreThanARowBeyondTheirShare) {
    constexpr std::size_t kShare = std::size_t{1} << 20;
    const std::string row = std::string(300'000, 'x') + '\n';
    std::string content;
    for (int i = 0; i < 10; ++i) content += row;
    RowSource source = Source(content);
    std::size_t rows = 0;
    std::uint64_t bytes = 0;
    while (const auto block = source.Next(kAllRows)) {
        EXPECT_LT(block->text.size(), kShare + row.size());
        EXPECT_GE(block->input_bytes, bytes);
        bytes = block->input_bytes;
        rows += block->lengths.size();
    }
    EXPECT_EQ(rows, 10U);
    EXPECT_EQ(bytes, content.size());
}

}  // namespace
}  // namespace cwt
