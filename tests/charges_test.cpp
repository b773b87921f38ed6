#include "rating/charges.h"

#include <regex>

#include "frame/bytes.h"
#include "rating/break_lists.h"
#include "support/scripted_engine.h"

namespace hundredweight {

struct ChargesTest : RatingTest {
    void Entry(std::size_t i, char kind, int32_t weight, int32_t amount, int32_t rate = 0) {
        Answer(1880 + i, {&kind, 1});
        AnswerNumber(1912 + 4 * i, weight);
        AnswerNumber(2032 + 4 * i, amount);
        AnswerNumber(976 + 4 * i, rate);
        AnswerNumber(2154, static_cast<int16_t>(i + 1));
    }
    std::string List(int list) const {
        std::string text;
        const BreakList& entries = context_.BreakLists[list];
        for (int i = 0; i < entries.Count; ++i)
            text += Printed(entries.Labels[i]) + ' ' + std::to_string(entries.Weights[i]) + '=' +
                    std::to_string(entries.Amounts[i]) + Printed(entries.Marks[i]) + ' ';
        return text;
    }
    /// Rates a shipment on a ZMC file. Result: ZmcMinimum, ZmcFloor and ZmcMinimumDollars.
    std::string RateOn(const std::string& zmc, int32_t count, const char* origin = "10000",
                       const char* destination = "20000") {
        if (!zmc.empty()) WriteFile("ABC.ZMC", zmc);
        PutText(context_.OrigZip, origin);
        PutText(context_.DestZip, destination);
        context_.ZmcCount = count;
        context_.ZmcMinimumDollars = -1;
        context_.ZmcFloor = context_.ZmcMinimum = 9;
        BuildChargeLines(context_);
        return Joined(context_.ZmcMinimum, context_.ZmcFloor, context_.ZmcMinimumDollars);
    }
};

TEST_F(ChargesTest, EachFieldIsPrintedAndNothingElseIsWritten) {
    const Span points{offsetof(RateContext, OrigZip), 96},
        lines{offsetof(RateContext, LineRateText), 356}, table = HWT_FIELD(EngineRateTable),
                                                         copy = HWT_FIELD(BilledWeightCopy),
                                                         zmc{offsetof(RateContext, ZmcMinimum), 8};
    std::vector<Span> all = {points, lines, table, copy, zmc};
    for (const std::size_t list : {0U, 1U, 2U, 4U})
        all.push_back({HWT_FIELD(BreakLists[0].Count).offset + list * sizeof(BreakList), 4});
    // ZmcMinimum on entry, the answer's texts by their offsets, and what is printed: zeros as bars,
    // equal lines and bytes left alone as one. The gross adds the lines as printed and the extra
    // charge as read.
    const std::tuple<float, const char*, std::string> rows[] = {
        {49.5F,
         "36 NY 61 CA 90 _1234567___ 101 001234 107 ___500 113 0045.50 120 009.999 127 000000 "
         "133 00000.005 142 __1234.56 196 DI 220 ___234.56 229 0004.25 241 45.50 276 0012.34 "
         "283 00000.874 313 00000.004 343 00000.004 373 00000.084 486 _______ 493 00000.004 976 "
         "rates",
         "#NY|#D#CA|#I#1234567|    12.34|     0.00|       0.87|       0.00|       0.08|       0.00|"
         "#      |  10.00|     0.01|  1234|   500|       0.95|#45.50#   234.56#     0.00|#  1234.56"
         "#0049.75|#rates|   500|"},
        {1e20F,
         "36 WA 61 TX 90 ABCDEFGHIJK 101 123456 107 999999 229 9999999 120 9999999 127 000001 "
         "133 999999999 142 999999999 196 __ 220 888888888 241 99.99 276 0000000 283 9.9999e30 "
         "486 9999999 493 000-12.50 976 RATES",
         "#WA|# #TX|# #ABCDEFGH     0.00|9999999.0|99998999999999|       0.00|     -12.50|"
         "#     1|9999999|999999999|123456|999999|10000000037683|99.99#888888888#     0.00|"
         "#999999999#100000002|RATES|999999|"}};
    const auto guarded = std::make_unique<RateContext>(), written = std::make_unique<RateContext>();
    Fill(*guarded, {0, sizeof *guarded}, '#');
    guarded->ZmcCount = guarded->UseServiceGuide = guarded->SurchargeOn = 0;
    for (const auto& [minimum, answer, expected] : rows) {
        Answer(0, std::string(2160, '\0'));
        for (const auto& [offset, text] : Table<2>(answer)) Answer(std::stoul(offset), text);
        guarded->ZmcMinimum = minimum;
        *written = *guarded;
        BuildChargeLines(*written);
        std::string printed;
        for (const Span& field : {points, lines, table, copy}) printed += BytesOf(*written, field);
        for (const auto& [many, one] :
             {std::pair("\\x00+", "|"), {"#+", "#"}, {"( +0.00.)+", "$1"}})
            printed = std::regex_replace(printed, std::regex(many), one);
        EXPECT_EQ(printed, expected);
        EXPECT_EQ(+written->ZmcMinimum, 0);
        ExpectAlikeOutside(all, *guarded, *written);
    }
    // Points without a city and the service guide's codes are left alone.
    for (const std::size_t point : {36U, 61U}) Answer(point, "ZZNone of the above");
    guarded->UseServiceGuide = 1;
    *written = *guarded;
    BuildChargeLines(*written);
    EXPECT_EQ(BytesOf(*written, {offsetof(RateContext, OrigZip), 88}), std::string(88, '#'));
}

std::string Zmc(const std::string& ranges, float minimum, float floor) {
    std::string record = Padded(ranges, 41);
    StoreLittleEndian(&record[33], minimum);
    StoreLittleEndian(&record[37], floor);
    return record;
}

TEST_F(ChargesTest, TheFirstZmcRecordThatMatchesPointsAndRateCodeCounts) {
    // One way (F) or either from 10000-19999 (1) to 20000-29999 (2); rate codes; shipment.
    for (const auto& [way, codes, origin, destination, rate_code, matches] : Table<6>(
             "F12 400123400123 10000 29999 1234 1  F12 400124999999 10000 29999 1234 0 "
             "F12 000000400122 10000 29999 1234 0  F12 612345612345 19999 20000 123456 1 "
             "F12 A12345A12345 19999M 20000 A12345 1  F12 000000zzzzzz 20000 19999 1234 0 "
             "F12 000000zzzzzz 09999 29999 1234 0  F12 000000zzzzzz 10000 19999 1234 0 "
             "F12 000000zzzzzz 10000 30000 1234 0  -12 000000zzzzzz 20000 19999 1234 1 "
             "-12 000000zzzzzz 10000 29999 1234 1  -12 000000zzzzzz 15000 15000 1234 0 "
             "F12 200001200001 10000 20000 12-34 1  F12 5-00005-0000 10000 20000 -5 1 "
             "F12 000000000000 10000 20000 A1234 1  F12 612345612345 10000 20000 1_2_3_4_5_6 1 "
             "-21 000000zzzzzz 20000 10000 1234 0  F21 000000zzzzzz 20000 10000 1234 1")) {
        const std::string first = "1000019999", second = "2000029999";
        const std::string points = way[1] == '1' ? first + second : second + first;
        Answer(90, Padded(rate_code, 11));
        EXPECT_EQ(RateOn(Zmc("F", 1, 1) + Zmc(way[0] + points + codes, 4550, 250), 2,
                         origin.c_str(), destination.c_str()),
                  matches == "1" ? "4550:2.5:45.5" : "0:0:-1")
            << way << codes << origin << destination;
    }
    // The first match of the counted records ends the search.
    const std::string all = "-00000zzzzz00000zzzzz000000zzzzzz";
    const std::string file = Zmc("F", 1, 1) + Zmc(all, -5, 300) + Zmc(all, 700, 800);
    EXPECT_EQ(RateOn("", 3), "0:0:-1");
    EXPECT_EQ(RateOn(file, 1), "0:0:-1");
    EXPECT_EQ(RateOn(file, 9), "0:3:-1");
    EXPECT_EQ(RateOn("F0", 1), "0:0:-1");
}

TEST_F(ChargesTest, WeightBreakEntriesGoToTheirSortedLists) {
    const std::tuple<char, int32_t, int32_t, int32_t> rows[] = {
        {'2', 500, 1, 0},  {'1', 1234567890, 7, 0}, {'2', 500, 2, 5}, {' ', 100, 3, 0},
        {'1', 400, 8, -1}, {'1', -5, 9, 0},         {'1', -5, 4, 0}};
    std::size_t i = 0;
    for (const auto& [kind, weight, amount, rate] : rows) Entry(i++, kind, weight, amount, rate);
    BuildChargeLines(context_);
    EXPECT_EQ(List(0), "MC    -5#> -5=9 MC    -5#> -5=4 MC 1234567890# 1234567890=7 ");
    EXPECT_EQ(List(1), "SS   100#> 100=3 SS   500#> 500=2 SS   500#> 500=1 ");
    EXPECT_EQ(Joined(context_.BreakLists[2].Count, context_.BreakLists[4].Count), "3:3");
    // Fifteen entries at most, the first ones.
    for (i = 0; i < 30; ++i) Entry(i, i < 10 ? '1' : '2', 1000 - static_cast<int32_t>(i), 5);
    AnswerNumber<int16_t>(2154, 32767);
    BuildChargeLines(context_);
    EXPECT_EQ(Joined(context_.BreakLists[0].Count, context_.BreakLists[1].Count,
                     context_.BreakLists[1].Weights[0]),
              "10:15:976");
}

TEST_F(ChargesTest, AmountsAreRaisedToTheFloors) {
    // DiscountFloor, ZmcFloor, ZmcMinimum, the entry's amount and what is listed.
    for (const auto& [discount_floor, zmc_floor, zmc_minimum, amount, listed] :
         Table<5>("0 0 0 100 100  50.9 0 0 50 50*  50.9 0 0 51 51  0 50.9 0 50 50*  60 50 0 55 60* "
                  "60 70 0 65 65  0 0 200.7 150 200  100 0 200 50 100*  100 0 0 100 100 "
                  "3e9 0 0 1 2147483647*")) {
        context_.DiscountFloor = std::stof(discount_floor);
        context_.ZmcFloor = std::stof(zmc_floor);
        context_.ZmcMinimum = std::stof(zmc_minimum);
        Entry(0, '1', 500, std::stoi(amount));
        BuildBreakLists(context_);
        EXPECT_EQ(List(0), "MC   500#> 500=" + listed + ' ');
    }
}

TEST_F(ChargesTest, TheSurchargeDependsOnTheBilledWeightsSideOfTheBreak) {
    SetClassesAndWeights(&context_, 0, 0);
    context_.SurchargeOn = 1;
    context_.DefFactorLow = 10;
    context_.DefFactorHigh = 20;
    Answer(283, "001000.00");
    Answer(220, "   100.00");
    // SurchargeOnGross, DefBreakIndex, billed weight, surcharge, SurchargeBreakSide.
    for (const auto& [on_gross, index, billed, printed, side] :
         Table<5>("Y 6 019999 100.00 5  Y 6 020000 200.00 7  N 6 019999 _90.00 5 "
                  "_ 6 020000 180.00 7  Y 8 999999 200.00 9  Y 9 999999 100.00 8 "
                  "Y 99 000000 100.00 98  Y -1 999999 100.00 -2  Y . 000000 200.00 1")) {
        context_.SurchargeOnGross = on_gross[0];
        PutText(context_.DefBreakIndex, index);
        Answer(107, billed);
        BuildChargeLines(context_);
        EXPECT_EQ(Printed(context_.SurchargeText), "   " + printed) << index;
        EXPECT_EQ(std::to_string(+context_.SurchargeBreakSide), side);
    }
}

}  // namespace hundredweight
