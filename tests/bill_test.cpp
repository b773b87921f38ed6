// Amounts in whole cents, and the bill that they are read from the record into.
#include "bill/bill.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <hundredweight/rate_context.h>

#include <cstring>
#include <memory>
#include <optional>

#include "bill/money.h"
#include "text/field_text.h"

namespace cwt {
namespace {

TEST(Bill, AmountsAreReadToTheCentOrNotAtAll) {
    const std::pair<const char*, std::optional<Cents>> cases[] = {
        {"0.00", 0},
        {"0.01", 1},
        {"-12.50", -1250},
        {"-0.00", 0},
        {"0012.34", 1234},
        {"99999999999.99", 9'999'999'999'999},
        {"-99999999999.99", -9'999'999'999'999},
        {"999999999999.99", std::nullopt},
        {"", std::nullopt},
        {"-", std::nullopt},
        {".50", std::nullopt},
        {"1.5", std::nullopt},
        {"1.500", std::nullopt},
        {"150", std::nullopt},
        {"1,50", std::nullopt},
        {"1,000.00", std::nullopt},
        {" 1.00", std::nullopt},
        {"1.00 ", std::nullopt},
        {"+1.00", std::nullopt},
        {"--1.00", std::nullopt},
        {"1.0-", std::nullopt},
        {"1.:0", std::nullopt},
        {"/1.00", std::nullopt},
        {"1.0.00", std::nullopt},
        {"********", std::nullopt},
        {"nan", std::nullopt},
    };
    for (const auto& [text, cents] : cases) {
        EXPECT_EQ(ParseCents(text), cents) << text;
        EXPECT_EQ(CentsOf(text), cents.value_or(0)) << text;
    }
    for (const Cents cents : {0, 1, 99, 100, 123456, -1, -99, -100, -1250}) {
        EXPECT_EQ(ParseCents(AmountOf(cents)), cents) << AmountOf(cents);
    }
}

TEST(Bill, SharesRoundHalfACentAwayFromZero) {
    const struct {
        Cents amount;
        int64_t hundredths;
        Cents part;
    } percents[] = {
        {10000, 1250, 1250}, {1, 5000, 1},     {1, 4999, 0}, {-1, 5000, -1},
        {-1, 4999, 0},       {333, 3333, 111}, {0, 9999, 0}, {99999999, 9999, 99989999}};
    for (const auto& [amount, hundredths, part] : percents) {
        EXPECT_EQ(PercentOf(amount, hundredths), part) << amount << " " << hundredths;
    }
    const struct {
        int weight;
        Cents rate, charge;
    } charges[] = {
        {100, 3120, 3120}, {1205, 3120, 37596}, {1, 50, 1}, {1, 49, 0}, {999999, 99999, 999989000}};
    for (const auto& [weight, rate, charge] : charges) {
        EXPECT_EQ(ChargeOf(weight, rate), charge) << weight << " at " << rate;
    }
    const struct {
        Cents part, base;
        std::optional<int64_t> share;
    } shares[] = {{1, 3, 3333},    {2, 3, 6667}, {-1, 3, -3333},       {1, 20000, 1},
                  {-1, 20000, -1}, {0, 5, 0},    {5, 0, std::nullopt}, {5, -5, std::nullopt}};
    for (const auto& [part, base, share] : shares) {
        EXPECT_EQ(ShareOf(part, base), share) << part << " of " << base;
    }
}

/// A record after a rating of two lines.
std::unique_ptr<RateContext> RatedRecord() {
    auto record = std::make_unique<RateContext>();
    RateContext& context = *record;
    SetBytes(context.TariffName, "SMPLNATL");
    SetBytes(context.LevelFileDate, "01-31-2024");
    SetBytes(context.OrigZip, "30303 ");
    SetBytes(context.DestZip, "64000M");
    SetBytes(context.ClassTable[3], "60");
    const struct {
        std::size_t line;
        const char *class_code, *mark, *weight, *rate, *charge;
    } lines[] = {{0, "70", "*", "  1205", "    31.20", "    375.96"},
                 {2, "85", "", "   695", "    40.00", "    278.00"},
                 {3, "50", "", "     0", "     0.00", "      0.00"}};
    for (const auto& [line, class_code, mark, weight, rate, charge] : lines) {
        SetBytes(context.LineClass[line], class_code);
        SetBytes(context.LineClassMark[line], mark);
        SetBytes(context.LineWeight[line], weight);
        SetBytes(context.LineRateText[line], rate);
        SetBytes(context.LineChargeText[line], charge);
    }
    context.LineClassIndex[0] = 3;
    SetBytes(context.ExtraWeightText, "   100");
    SetBytes(context.ExtraRateText, "  30.00");
    SetBytes(context.ExtraChargeText, "    30.00");
    SetBytes(context.TotalWeightText, "  1900");
    SetBytes(context.BilledWeightText, "  2000");
    SetBytes(context.GrossChargeText, "     683.96");
    SetBytes(context.DiscountPctText, "05.50");
    SetBytes(context.DiscountAmountText, "00037.62");
    SetBytes(context.SurchargeText, "    -0.00");
    SetBytes(context.MinChargeText, "0099.00");
    SetBytes(context.NetChargeText, "00646.34");
    return record;
}

TEST(Bill, IsReadFromTheRecordWithNothingLostOrAdded) {
    const auto record = RatedRecord();
    RateContext& context = *record;
    Bill bill = ReadBill(context, {"a note"});
    EXPECT_EQ(bill.origin.zip + bill.destination.zip, "3030364000M");
    ASSERT_EQ(bill.lines.size(), 2U) << "a line without weight is none";
    EXPECT_EQ(bill.lines[0].class_code + bill.lines[0].rated_as, "7060");
    EXPECT_EQ(bill.lines[1].class_code + bill.lines[1].rated_as, "8585");
    EXPECT_EQ(bill.lines[0].weight + bill.lines[1].weight, 1900);
    EXPECT_EQ(bill.deficit.weight, 100);
    EXPECT_EQ(bill.discount_percent, "5.50");
    EXPECT_EQ(bill.discount_amount, "37.62");
    EXPECT_EQ(bill.surcharge, "0.00");
    EXPECT_EQ(bill.minimum, "99.00");
    EXPECT_EQ(bill.net + " " + bill.total_due, "646.34 646.34");
    EXPECT_FALSE(bill.transit_days);
    EXPECT_EQ(bill.notes, std::vector<std::string>{"a note"});
    EXPECT_TRUE(CheckAmounts(bill).empty());
    EXPECT_EQ(SumOfLines(bill), 68396);
    EXPECT_EQ(GrossNote(bill), "");
    bill.gross = "683.95";
    EXPECT_NE(GrossNote(bill), "");
    SetBytes(context.SurchargeText, "    12.50");
    SetBytes(context.DiscountAmountText, "00000.00");
    EXPECT_EQ(ReadBill(context, {}).total_due, "658.84");
    EXPECT_EQ(ReadBill(context, {}).discount_amount, "0.00");
    SetBytes(context.SurchargeText, "   -12.50");
    EXPECT_EQ(ReadBill(context, {}).total_due, "633.84");
    context.UseServiceGuide = 1;
    std::memcpy(context.SgValueA, "02", 2);
    std::memcpy(context.SgValueB, "x2", 2);
    bill = ReadBill(context, {});
    ASSERT_TRUE(bill.transit_days);
    EXPECT_EQ(bill.transit_days->standard, 2);
    EXPECT_EQ(bill.transit_days->guaranteed, std::nullopt) << "no number of days";
    EXPECT_EQ(bill.transit_days->border, std::nullopt);
}

TEST(Bill, AmountsThatAreNoneAndWeightsThatDoNotAddUpAreRefused) {
    const struct {
        const char* place;
        void (*spoil)(Bill&);
    } cases[] = {
        {"lines[1].rate", [](Bill& bill) { bill.lines[1].rate = "*******"; }},
        {"lines[0].charge", [](Bill& bill) { bill.lines[0].charge = ""; }},
        {"deficit.rate", [](Bill& bill) { bill.deficit.rate = "1e3"; }},
        {"deficit.charge", [](Bill& bill) { bill.deficit.charge = "1.5"; }},
        {"gross_charge", [](Bill& bill) { bill.gross = "683,96"; }},
        {"discount_percent", [](Bill& bill) { bill.discount_percent = "5.5"; }},
        {"discount_amount", [](Bill& bill) { bill.discount_amount = "ABC"; }},
        {"net_charge", [](Bill& bill) { bill.net = ""; }},
        {"minimum_charge", [](Bill& bill) { bill.minimum = "99"; }},
        {"surcharge", [](Bill& bill) { bill.surcharge = "12345678."; }},
        {"total_weight", [](Bill& bill) { bill.total_weight = 1899; }},
        {"total_weight", [](Bill& bill) { bill.total_weight = 1901; }},
        {"billed_weight", [](Bill& bill) { bill.billed_weight = 1899; }},
    };
    for (const auto& [place, spoil] : cases) {
        Bill bill = ReadBill(*RatedRecord(), {});
        spoil(bill);
        const Refusals refusals = CheckAmounts(bill);
        ASSERT_EQ(refusals.size(), 1U) << place;
        EXPECT_EQ(refusals[0].place, place);
    }
    Bill bill = ReadBill(*RatedRecord(), {});
    bill.billed_weight = 1900;
    EXPECT_TRUE(CheckAmounts(bill).empty()) << "no deficit";
}

}  // namespace
}  // namespace cwt
