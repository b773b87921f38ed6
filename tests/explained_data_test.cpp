// Whether explanations follow the data, and name no reason where the data no longer hold one.
#include <cstddef>
#include <functional>

#include "bill/money.h"
#include "session/explained.h"
#include "support/explained_samples.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

using ExplainedDataTest = ExplainedSamples;

template <class Number>
std::string Bytes(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

const Statement& Topic(const Explanation& explanation, const std::string& topic) {
    for (const Statement& statement : explanation) {
        if (statement.topic == topic) return statement;
    }
    ADD_FAILURE() << topic;
    return explanation.front();
}

/// A record of the minimum-charge file in one direction, amounts in cents.
std::string Lane(const std::string& rate_codes, float minimum, float floor,
                 const std::string& ranges = "30000319996000062999") {
    return "F" + ranges + rate_codes + Bytes(minimum) + Bytes(floor);
}

/// Where a part of the second profile, Northeast, lies in its file.
constexpr std::size_t InNortheast(std::size_t offset) {
    return sizeof(ProfileRecord) + offset;
}
constexpr std::size_t kZipDiscounts = InNortheast(offsetof(ProfileRecord, ZipDiscounts));
constexpr std::size_t kStateDiscount = kZipDiscounts + sizeof(ZipDiscountRecord);

TEST_F(ExplainedDataTest, WhatTheDataSayIsFollowed) {
    const auto put = [&](const char* name, std::size_t at, const std::string& bytes) {
        return [=, this] { Put(name, at, bytes); };
    };
    const auto lane = [&](const std::string& record) {
        return [=, this] { Write("SAMPLE.ZMC", record + Content("SAMPLE.ZMC")); };
    };
    const auto groups = [&](char selector) {
        return [=, this] {
            const std::string modes = Bytes(int16_t{0}) + Bytes(int16_t{1}) + Bytes(int16_t{0});
            Put("PROFILE.FIL", InNortheast(offsetof(ProfileRecord, DiscModeP)), modes);
            const std::size_t values = offsetof(ProfileRecord, DiscountValues);
            Put("PROFILE.FIL", InNortheast(values) + 2 * sizeof(float), Bytes(31.5F));
            Put("PROFILE.FIL", InNortheast(values) + 13 * sizeof(float), Bytes(37.25F));
            Put("SAMPLE.DIS", 88, std::string(1, selector));
        };
    };
    const auto surcharge = [&] {
        Put("SAMPLE.DEF", 12, Bytes(int16_t{1}));
        Put("SAMPLE.DEF", 41, Bytes(10.5F));
    };
    const char* const kRoad = "16-whole-road";
    const char* const kDiscounted = "01-deficit-and-discount";
    const struct {
        std::function<void()> change;
        const char *shipment, *changes, *topic, *words, *source;
    } rows[] = {
        {lane(Lane("100204100204", 0, 12345)), kDiscounted, "{}", "minimum",
         "record 1: from postal codes 30000-31999 to 60000-62999, rate codes 100204-100204, "
         "minimum 0.00, floor 123.45",
         "SAMPLE.ZMC record 1"},
        {lane(Lane("200000300000", 0, 12345)), kDiscounted, "{}", "minimum", "floor 98.00",
         "SAMPLE.ZMC record 2"},
        {lane(Lane("000000999999", 150, 0)), kDiscounted, "{}", "break_charges",
         "No floor raises them. The minimum-charge file's minimum, 150 as filed", "ZmcMinimum"},
        {lane(Lane("000000999999", 0, 12345, "60000629993000031999")), "03-eight-lines", "{}",
         "minimum", "record 1: from postal codes 60000-62999 to 30000-31999",
         "SAMPLE.ZMC record 1"},
        {put("SAMPLE.ZMC", 41, "F"), "10-many-breaks", "{}", "minimum", "record 2: from", ""},
        {groups('4'), kRoad, "{}", "discount",
         "group 2 of the discount file's 4, which its selector '4' takes for points in two states "
         "with direct",
         "PROFILE.FIL record 2 DiscountValues[13]"},
        {groups('2'), kRoad, "{}", "discount", "31.50 percent is that of weight break 3, 1000#>",
         "PROFILE.FIL record 2 DiscountValues[2]"},
        {groups('4'), kRoad, R"({"service_guide": false})", "discount", "group 4 of",
         "SAMPLE.DIS record 1 DisGroupSelector"},
        {put("PROFILE.FIL", kZipDiscounts, "11000"), kRoad, "{}", "discount",
         "none of the 2 ZIP and state records of profile Northeast fits",
         "PROFILE.FIL record 2 ZipDiscountCount"},
        {[&] {
             Put("PROFILE.FIL", kZipDiscounts, "11000");
             Put("PROFILE.FIL", kStateDiscount + offsetof(ZipDiscountRecord, DestHigh), "GA");
         },
         kRoad, R"({"destination": {"state": null}})", "discount",
         "record 2 of the 2 in profile Northeast: from NY to GA. 50.00 percent",
         "PROFILE.FIL record 2 ZipDiscounts[1].BreakPercent[2]"},
        {put("PROFILE.FIL", kZipDiscounts + offsetof(ZipDiscountRecord, FlatPercent), "12.50"),
         kRoad, "{}", "discount", "12.50 percent is its flat one",
         "PROFILE.FIL record 2 ZipDiscounts[0].FlatPercent"},
        {[&] {
             Put("SAMPLE.DEF", 262, "1");
             Put("SAMPLE.DEF", 268, "1");
             Put("PROFILE.FIL", kZipDiscounts + offsetof(ZipDiscountRecord, BreakPercent) + 8,
                 "   11.00");
         },
         kRoad, "{}", "discount",
         "11.00 percent is that of weight break 2, the last of the list, for 1000#> behind it",
         "PROFILE.FIL record 2 ZipDiscounts[0].BreakPercent[1]"},
        {put("SAMPLE.DIS", 112 + 2 * 25, " "), kDiscounted, "{}", "discount",
         "It is 0.00 percent at weight break 4, since the discount file has 2 weight columns",
         "SAMPLE.DIS record 1 DisWeightColumns"},
        {put("SAMPLE.SET", 270, "Y"), "04-flat-discount", "{}", "discount", "30.00 percent is that",
         "SAMPLE.SET record 1 NoFlatDiscountFlag"},
        {[] {}, kDiscounted, R"({"surcharge": {"low_percent": 10, "break_index": 6}})", "surcharge",
         "469.75. The library's own amount stands: 46.97. It reckons with binary fractions; "
         "decimals would give 46.98",
         "shipment surcharge.low_percent"},
        {surcharge, kRoad, "{}", "surcharge",
         "The low percentage of the defaults, for a billed weight of 1550, below 20000 pounds, "
         "where weight break 7 of the tariff set begins: 10.50 percent of the gross charge less "
         "discount, 513.50 x 10.50 / 100 = 53.92",
         "SAMPLE.WGT record 7"},
        {[&] {
             surcharge();
             Put("SAMPLE.DEF", 41, Bytes(-10.125F));
         },
         kRoad, "{}", "surcharge", "513.50 x -10.1250 / 100 = -51.99", "SAMPLE.SET record 1"},
        {[&] {
             surcharge();
             Put("SAMPLE.SET", 234, "Y");
             fs::remove(directory_ / "SAMPLE.WGT");
         },
         kRoad, "{}", "surcharge", "10.50 percent of the gross charge, 893.05",
         "WeightBreakMin[6]"},
        {[&] {
             Put("SAMPLE.DEF", 10, Bytes(int16_t{1}));
             Put("SAMPLE.DEF", 35, Bytes(1.25F));
         },
         kDiscounted, R"({"factor": 1.05})", "factor",
         "multiplied by 1.05, as entered, and by the conversion rate 1.25: 1.3125",
         "SAMPLE.DEF record 1 ConversionRate"},
        {[&] { fs::remove(directory_ / "SAMPLE.SC"); }, kDiscounted, R"({"origin": {"state": ""}})",
         "origin", "30303 lies in GA, as the engine tells", "Tolvex_GetStateEx"},
        {[] {}, kDiscounted, R"({"lines": [{"class": "70", "weight": 1900}]})", "deficit",
         "100 more x 38.30 / 100 = 38.30, the lowest rate of the lines. As it weighs it would have "
         "come to between 865.44 and 867.36",
         "ExtraRateText"},
        {[] {}, "10-many-breaks", "{}", "deficit", "would come to 3750 in whole dollars", ""},
        {[] {}, "09-all-kinds", "{}", "line", "one rate for freight of all kinds", ""},
        {[] {}, "05-discount-floor", "{}", "break_charges", "The discount's floor of 125.00",
         "shipment discount.floor"},
        {[] {}, kDiscounted, R"({"discount": null})", "discount", "No discount: the shipment has",
         "SAMPLE.DEF record 1 DiscountOn"},
        {[] {}, kDiscounted, R"({"profile": "Default", "discount": null})", "discount",
         "the profile switches none on", "PROFILE.FIL record 1 DiscModeZ"},
    };
    for (const auto& row : rows) {
        hundredweight::samples::WriteSampleData(directory_);
        row.change();
        Session session({.data = directory_});
        const ExplainedOutcome outcome = session.Explain(Sample(row.shipment, row.changes), 0);
        ASSERT_TRUE(std::holds_alternative<ExplainedBill>(outcome)) << row.words;
        const auto& explained = std::get<ExplainedBill>(outcome);
        const Statement& statement = Topic(explained.explanation, row.topic);
        EXPECT_NE(statement.words.find(row.words), std::string::npos) << statement.words;
        std::string joined;
        for (const Source& source : statement.sources) {
            joined += ExplanationText({{.topic = "", .sources = {source}}});
        }
        EXPECT_NE(joined.find(std::string("[") + row.source), std::string::npos) << joined;
        ExpectFigures(explained.explanation, FiguresOfBill(explained.bill));
    }
}

TEST_F(ExplainedDataTest, OwnFiguresOfAnEngineStandWithoutASum) {
    Session session({.data = directory_});
    const Shipment shipment = Sample("01-deficit-and-discount", R"({"surcharge":
        {"low_percent": 12, "high_percent": 5, "break_index": 6}})");
    const Outcome outcome = session.Rate(shipment, 0);
    DataFiles files({.data = directory_}, {});
    const auto copy = std::make_unique<RateContext>();
    const struct {
        const char* topic;
        std::string Bill::*figure;
    } rows[] = {{"gross", &Bill::gross},
                {"discount", &Bill::discount_amount},
                {"net", &Bill::net},
                {"surcharge", &Bill::surcharge}};
    for (const auto& [topic, figure] : rows) {
        Bill bill = std::get<Bill>(outcome);
        const std::string cent_more = AmountOf(CentsOf(bill.*figure) + 1);
        const std::string before = bill.*figure;
        bill.*figure = cent_more;
        const Explanation explanation =
            Explain(LookAt(shipment, session.context(), bill, files, *copy));
        const Statement& statement = Topic(explanation, topic);
        EXPECT_EQ(statement.adds_up, false) << topic;
        EXPECT_NE(statement.words.find("own"), std::string::npos) << statement.words;
        EXPECT_NE(statement.words.find(cent_more), std::string::npos) << statement.words;
        EXPECT_EQ(statement.words.find("= " + before), std::string::npos) << statement.words;
    }
    Bill bill = std::get<Bill>(outcome);
    bill.lines[1].charge = "362.09";
    bill.deficit.charge = "38.29";
    bill.discount_percent = "45.49";
    const Explanation explanation =
        Explain(LookAt(shipment, session.context(), bill, files, *copy));
    EXPECT_EQ(Topic(explanation, "line").adds_up, true);
    EXPECT_EQ(Topic(explanation, "deficit").adds_up, false);
    EXPECT_NE(Topic(explanation, "discount").words.find("the engine's own answer"),
              std::string::npos);
    EXPECT_EQ(std::ranges::count(explanation, std::optional(false), &Statement::adds_up), 5)
        << "the second line, the deficit, the gross charge, the discount and what rests on them";
}

TEST_F(ExplainedDataTest, RecordsThatAreNoLongerThereAreNotCited) {
    Session session({.data = directory_});
    const Shipment shipment = Sample("01-deficit-and-discount", R"({"tariff": null})");
    const Outcome outcome = session.Rate(shipment, 0);
    Write("SAMPLE.ZMC", "");
    for (int record = 0; record < 8; ++record) {
        Put("SAMPLE.CMT", static_cast<std::size_t>(record) * 20 + 12, "SMPLFAK1");
    }
    DataFiles files({.data = directory_}, {});
    const auto copy = std::make_unique<RateContext>();
    const Bill& bill = std::get<Bill>(outcome);
    const Explanation explanation =
        Explain(LookAt(shipment, session.context(), bill, files, *copy));
    const Statement& minimum = Topic(explanation, "minimum");
    EXPECT_NE(minimum.words.find("a record that is no longer there"), std::string::npos);
    EXPECT_EQ(minimum.sources.back().field, "ZmcRecord");
    const Statement& tariff = Topic(explanation, "tariff");
    EXPECT_NE(tariff.words.find("By which records is not known"), std::string::npos);
    EXPECT_EQ(tariff.sources.front().field, "TariffName");
}

}  // namespace
}  // namespace cwt
