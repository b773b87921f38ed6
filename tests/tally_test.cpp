// What came of a batch's rows, counted and in words, and the names of its columns.
#include "batch/tally.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <numeric>

#include "batch/verdict.h"
#include "bill/bill_columns.h"
#include "files/packing.h"

namespace cwt {
namespace {

Row RefusedRow(std::int32_t code, const std::string& text) {
    Row row;
    row.outcome = Refusals{{"", text, code}, {"factor", "a second refusal", 513}};
    return row;
}

Row RatedRow(std::vector<std::string> notes) {
    Bill bill;
    bill.notes = std::move(notes);
    Row row;
    row.outcome = bill;
    return row;
}

std::uint64_t RefusedByKind(const Tally& tally) {
    const auto json = tally.Json();
    return std::accumulate(json["refused_by"].begin(), json["refused_by"].end(), std::uint64_t{0},
                           [](std::uint64_t sum, const auto& kind) {
                               return sum + kind["rows"].template get<std::uint64_t>();
                           });
}

TEST(Tally, EveryRowIsCountedOnceByItsFirstRefusal) {
    Tally tally;
    Row failed;
    failed.outcome = Failure{"it ended"};
    tally.Count(RatedRow({}));
    tally.Count(RatedRow({"one", "two"}));
    tally.Count(failed);
    tally.Count(RefusedRow(105, "Invalid Class."));
    tally.Count(RefusedRow(105, "Invalid Class."));
    tally.Count(RefusedRow(-1, "Invalid Class."));
    Tally twice = tally;
    twice.Add(tally);
    EXPECT_EQ(tally.rows(), 6U);
    for (const auto& [sum, times] : {std::pair{&tally, 1U}, {&twice, 2U}}) {
        EXPECT_EQ(sum->rated(), 2 * times);
        EXPECT_EQ(sum->refused(), 3 * times);
        EXPECT_EQ(sum->failed(), times);
        const auto json = sum->Json();
        EXPECT_EQ(json["noted"], times);
        ASSERT_EQ(json["refused_by"].size(), 2U);
        EXPECT_EQ(json["refused_by"][0]["rows"], times) << "the engine's words";
        EXPECT_EQ(json["refused_by"][1]["rows"], 2 * times);
        EXPECT_EQ(Tally::FromJson(json).Json(), json);
    }
}

TEST(Tally, KindsBeyondTheMostAreStillCounted) {
    constexpr std::size_t kMost = 200;
    Tally first, second;
    for (int i = 0; i < 150; ++i) first.Count(RefusedRow(-1, fmt::format("first {}", i)));
    for (int i = 0; i < 150; ++i) second.Count(RefusedRow(-1, fmt::format("second {}", i)));
    first.Add(second);
    EXPECT_EQ(first.refused(), 300U);
    EXPECT_EQ(RefusedByKind(first), 300U);
    EXPECT_LE(first.Json()["refused_by"].size(), kMost + 1);
    first.Count(RefusedRow(-1, "first 0"));
    first.Count(RefusedRow(-1, "third"));
    EXPECT_EQ(RefusedByKind(first), 302U);
    const Tally read = Tally::FromJson(first.Json());
    EXPECT_EQ(RefusedByKind(read), 302U) << "a run that goes on";
    EXPECT_EQ(read.refused(), 302U);
}

TEST(Tally, AVerdictIsThatOfTheFirstRefusalWithAllReasons) {
    const struct {
        std::variant<Bill, Refusals, Failure> outcome;
        const char *status, *code, *place, *reason;
    } cases[] = {
        {Bill(), "rated", "", "", ""},
        {Failure{"it ended"}, "failed", "", "", "it ended"},
        {Refusals{{"a", "b", 105, "c", {"d", "e"}}, {"f", "g"}}, "refused", "105", "a",
         "a \"c\": b (code 105); possible: d, e; f: g"},
        {Refusals{{"a", "b", 0}, {"c", "d", 105}}, "refused", "", "a", "a: b; c: d (code 105)"},
        {Refusals{{"", "words", -1}}, "refused", "", "", "words"},
        {Refusals{{"", "words", 0, "\x1B[2J"}}, "refused", "", "", "\"\u241b[2J\": words"},
    };
    for (const auto& [outcome, status, code, place, reason] : cases) {
        const Verdict verdict = VerdictOf({1, "", outcome, {}});
        EXPECT_STREQ(verdict.status, status);
        EXPECT_EQ(verdict.code, code);
        EXPECT_EQ(verdict.place, place);
        EXPECT_EQ(verdict.reason, reason);
    }
}

TEST(Tally, PassedColumnsNeverTakeTheNameOfAnother) {
    using Names = std::vector<std::string>;
    const struct {
        Names passed, taken, names;
    } cases[] = {
        {{"note", "Note 2"}, {"row"}, {"note", "Note 2"}},
        {{"Row", "row", "ROW"}, {"row"}, {"input_Row", "input_input_row", "input_input_input_ROW"}},
        {{"input_row", "row"}, {"row"}, {"input_row", "input_input_row"}},
        {{"row", "input_row"}, {"row"}, {"input_row", "input_input_row"}},
        {{"a", "A"}, {}, {"a", "input_A"}},
    };
    for (const auto& [passed, taken, names] : cases) EXPECT_EQ(PassedNames(passed, taken), names);
}

TEST(Tally, PackedRowsAreKnownByTheirFirstBytes) {
    const std::pair<std::string, Packing> cases[] = {
        {"", Packing::kNone},
        {"{\"id\": 1}", Packing::kNone},
        {"\x1F", Packing::kNone},
        {"\x1F\x8B", Packing::kGzip},
        {"\x28\xB5\x2F\xFD", Packing::kZstandard},
        {"\x28\xB5\x2F", Packing::kNone},
        {"\x50\x2A\x4D\x18", Packing::kZstandard},
        {"\x5F\x2A\x4D\x18", Packing::kZstandard},
        {"\x4F\x2A\x4D\x18", Packing::kNone},
        {"PP\x2A\x4D\x18", Packing::kNone},
    };
    for (const auto& [beginning, packing] : cases) EXPECT_EQ(PackingOf(beginning), packing);
}

}  // namespace
}  // namespace cwt
