// The figures of a comparison, row by row, and how changes are spread.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "comparison/comparison.h"
#include "comparison/histogram.h"

namespace cwt {
namespace {

BatchRow RatedRow() {
    BatchRow row;
    row.number = 1;
    row.status = RowStatus::kRated;
    row.tariff = "SMPLNATL", row.tariff_date = "2025-01-06";
    row.origin = "30303", row.destination = "60601";
    row.lines = {{"70", "70", 500, 10000}, {"85", "85", 500, 5000}};
    row.total_weight = row.billed_weight = 1000, row.weight_break = 1000;
    row.gross = 15000, row.discount_percent = 1000, row.discount = 1500, row.net = 13500;
    row.minimum = 13500, row.surcharge = 100, row.due = 13600;
    return row;
}

BatchRow NotRated(RowStatus status, const char* reason) {
    BatchRow row;
    row.number = 1;
    row.status = status, row.reason = reason;
    return row;
}

TEST(ComparisonFigures, EveryFigureOfARowTellsAChange) {
    const BatchRow row = RatedRow();
    EXPECT_FALSE(Changed(row, row));
    for (const auto figure : {&BatchRow::deficit_weight, &BatchRow::deficit_charge,
                              &BatchRow::billed_weight, &BatchRow::weight_break, &BatchRow::gross,
                              &BatchRow::discount_percent, &BatchRow::discount, &BatchRow::net,
                              &BatchRow::minimum, &BatchRow::surcharge, &BatchRow::due}) {
        for (const int64_t change : {-1, 1}) {
            BatchRow other = row;
            other.*figure += change;
            EXPECT_TRUE(Changed(row, other));
        }
    }
    BatchRow other = row;
    other.lines[1].charge += 1, other.lines[0].charge -= 1;
    EXPECT_TRUE(Changed(row, other)) << "charges that add up to the same";
    other = row;
    other.lines[1].rated_as = "77";
    EXPECT_TRUE(Changed(row, other));
    other = row;
    other.tariff = "SMPLREGN";
    EXPECT_FALSE(Changed(row, other)) << "the tariff is what was changed";
    const BatchRow refused = NotRated(RowStatus::kRefused, "a");
    EXPECT_TRUE(Changed(row, refused));
    EXPECT_FALSE(Changed(refused, refused));
    EXPECT_TRUE(Changed(refused, NotRated(RowStatus::kRefused, "b")));
    EXPECT_TRUE(Changed(refused, NotRated(RowStatus::kFailed, "a")));
}

TEST(ComparisonFigures, ShipmentsThatOneSideAloneRatesAreInNoSum) {
    Comparison comparison;
    const BatchRow rated = RatedRow();
    BatchRow lower = rated;
    lower.due = 13500, lower.lines[0].rated_as = "60", lower.lines[0].charge = 9900;
    lower.deficit_weight = 9, lower.discount_percent = 999, lower.weight_break = 500;
    lower.discount = 1499;
    comparison.Add(rated, lower);
    comparison.Add(rated, NotRated(RowStatus::kRefused, "a"));
    comparison.Add(NotRated(RowStatus::kFailed, "a"), lower);
    comparison.Add(NotRated(RowStatus::kRefused, "a"), NotRated(RowStatus::kRefused, "b"));
    comparison.Add(NotRated(RowStatus::kFailed, "a"), NotRated(RowStatus::kFailed, "b"));
    comparison.Add(NotRated(RowStatus::kFailed, "a"), NotRated(RowStatus::kRefused, "b"));
    comparison.Add(NotRated(RowStatus::kFailed, "a"), NotRated(RowStatus::kFailed, "a"));
    EXPECT_EQ(comparison.rows, 7);
    EXPECT_EQ(comparison.other_reason, 2);
    EXPECT_EQ(comparison.of_old.rated_alone, 1);
    EXPECT_EQ(comparison.of_old.rated_alone_due, 13600);
    EXPECT_EQ(comparison.of_new.rated_alone, 1);
    EXPECT_EQ(comparison.of_new.rated_alone_due, 13500);
    for (const ComparedSide* side : {&comparison.of_old, &comparison.of_new}) {
        EXPECT_EQ((side->tariffs.at({"SMPLNATL", "2025-01-06"})), 2);
    }
    EXPECT_EQ(comparison.total.count, 1);
    EXPECT_EQ(comparison.total.fell, 1);
    EXPECT_EQ(comparison.total.rose, 0);
    EXPECT_EQ(comparison.total.sum.change(), -100);
    EXPECT_EQ(comparison.other_class + comparison.other_break + comparison.other_discount_percent,
              3);
    EXPECT_EQ(comparison.deficit_taken.new_only, 1);
    // The discounted charge that is the minimum is not raised to it; a cent below is.
    EXPECT_EQ(comparison.minimum_held.neither, 1);
    BatchRow held = rated;
    held.minimum += 1;
    comparison.Add(held, rated);
    EXPECT_EQ(comparison.minimum_held.old_only, 1);
    EXPECT_EQ(comparison.breaks.at(1000).count, 2);
    EXPECT_EQ(comparison.classes.at("70").sum.change(), -100);
    EXPECT_EQ(comparison.classes.at("85").count, 2);
    EXPECT_FALSE(comparison.classes.contains("60")) << "groups are those of the old side";
    EXPECT_FALSE(comparison.breaks.contains(500));
}

TEST(ComparisonFigures, ChangesAreInTenthsOfAPercentOfTheOldTotal) {
    const struct {
        int64_t old_due, new_due, tenths;
    } cases[] = {
        {10000, 10000, 0}, {10000, 10004, 0}, {10000, 10005, 1},    {10000, 9996, 0},
        {10000, 9995, -1}, {10000, 0, -1000}, {10000, 20000, 1000}, {1, 3, 2000},
        {3, 4, 333},       {3, 2, -333},      {3, 5, 667},          {7777, 8000, 29},
    };
    for (const auto& [old_due, new_due, tenths] : cases) {
        BatchRow old_row = RatedRow(), new_row = old_row;
        old_row.due = old_due, new_row.due = new_due;
        Comparison comparison;
        comparison.Add(old_row, new_row);
        EXPECT_EQ(comparison.percent.Percentile(50), tenths) << old_due << " " << new_due;
        EXPECT_EQ(comparison.cents.Percentile(50), new_due - old_due);
        EXPECT_EQ(comparison.without_base, 0);
    }
    for (const int64_t base : {0, -5}) {
        BatchRow old_row = RatedRow();
        old_row.due = base;
        Comparison comparison;
        comparison.Add(old_row, RatedRow());
        EXPECT_EQ(comparison.percent.size(), 0);
        EXPECT_EQ(comparison.without_base, 1);
    }
}

TEST(ComparisonFigures, LanesGoByTheirFirstThreeCharacters) {
    const struct {
        const char *origin, *destination, *lane;
    } cases[] = {{"30303", "60601", "303 to 606"},
                 {"M5H2N2", "64000M", "M5H to 640M"},
                 {"303", "64000", "303 to 640"},
                 {"30M", "3MMM", "30M to 3MMM"}};
    for (const auto& [origin, destination, lane] : cases) {
        BatchRow row = RatedRow();
        row.origin = origin, row.destination = destination;
        Comparison comparison;
        comparison.Add(row, row);
        EXPECT_EQ(comparison.lanes.begin()->first, lane);
    }
}

TEST(ComparisonFigures, APercentileIsTheLowestValueThatSoManyDoNotExceed) {
    Histogram empty, histogram;
    EXPECT_EQ(empty.Percentile(50), 0);
    EXPECT_TRUE(empty.Bands().empty());
    for (int value = 1; value <= 10; ++value) histogram.Add(11 - value);
    const std::pair<int, int> percentiles[] = {{0, 1},  {1, 1},  {10, 1},  {11, 2},  {50, 5},
                                               {51, 6}, {90, 9}, {91, 10}, {100, 10}};
    for (const auto& [percent, value] : percentiles) {
        EXPECT_EQ(histogram.Percentile(percent), value) << percent;
    }
    const std::pair<int64_t, int64_t> kept[] = {
        {9999, 9999},     {-9999, -9999},   {10004, 10000},   {10005, 10010},
        {-10005, -10010}, {123449, 123400}, {123450, 123500}, {-123450, -123500}};
    for (const auto& [value, rounded] : kept) {
        Histogram one;
        one.Add(value);
        EXPECT_EQ(one.Percentile(100), rounded);
    }
}

TEST(ComparisonFigures, BandsHoldEveryValueOnce) {
    const std::vector<std::vector<int64_t>> cases = {
        {0},        {-1},           {5, 5, 5},         {-7, 8},       {0, 16},   {0, 15},
        {-100, 99}, {-9999, 12345}, {1, 2, 1'000'000}, {-50, -49, 0}, {-1, 0, 1}};
    for (std::vector<int64_t> values : cases) {
        for (int i = 0; i < 30; ++i) values.push_back(values[0] + i % 3);
        Histogram histogram;
        for (const int64_t value : values) histogram.Add(value);
        const auto bands = histogram.Bands();
        ASSERT_FALSE(bands.empty());
        EXPECT_LE(bands.size(), 18U);
        int64_t counted = 0;
        for (std::size_t i = 0; i < bands.size(); ++i) {
            const auto& [from, to, open_below, open_above, count] = bands[i];
            EXPECT_EQ(open_below && i > 0, false);
            EXPECT_EQ(open_above && i + 1 < bands.size(), false);
            if (i > 0) {
                EXPECT_EQ(from, bands[i - 1].to) << "no value falls between";
            }
            int64_t within = 0;
            for (const int64_t value : values) {
                const bool is_in = (open_below || value >= from) && (open_above || value < to);
                within += is_in ? 1 : 0;
            }
            EXPECT_EQ(count, within) << fmt::format("{} to {} of {}", from, to, values[0]);
            counted += count;
        }
        EXPECT_EQ(counted, histogram.size());
    }
}

}  // namespace
}  // namespace cwt
