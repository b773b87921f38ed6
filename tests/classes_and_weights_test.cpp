#include "rating/classes_and_weights.h"

#include "platform/message_box.h"
#include "support/recorded_boxes.h"
#include "support/scripted_engine.h"
#include "support/table.h"

namespace hundredweight {

struct ClassesAndWeightsTest : RatingTest {
    /// Sets the tables in a mode; both the engine's answer and the engine have the section.
    void Set(int32_t mode, const EngineTablesSection& section = {}) {
        AnswerNumber(1676, section);
        engine_.tables = [section](EngineTablesRecord& record) {
            record.Tables = section;
            return 1;
        };
        SetClassesAndWeights(&context_, mode, 0);
    }
    /// The classes, then each weight break's name, lowest and highest weight.
    std::string Tables() const {
        std::string list;
        for (int i = 0; i < context_.ClassCount; ++i) list += Printed(context_.ClassTable[i]) + ' ';
        for (int i = 0; i < context_.WeightBreakCount; ++i)
            list += Printed(context_.WeightBreakName[i]) + ' ' +
                    std::to_string(context_.WeightBreakMin[i]) + '-' +
                    std::to_string(context_.WeightBreakMax[i]) + ' ';
        return list;
    }
    const std::string standard_classes_ =
        "500 400 300 250 200 175 150 125 110 100 92 85 77 70 65 60 55 50 ";
    const std::string standard_breaks_ =
        "L5C 0-499 M5C 500-999 M1M 1000-1999 M2M 2000-4999 M5M 5000-9999 M10M 10000-19999 M20M "
        "20000-29999 M30M 30000-39999 M40M 40000-9999999 ";
    RecordedBoxes recorded_;
};

TEST_F(ClassesAndWeightsTest, ComeFromTheAnswerOrFromTheEngine) {
    for (const int32_t mode : {kTablesFromRequest, kTablesFromAnswer}) {
        Fill(context_, HWT_FIELD(ClassTable), '#');
        Set(mode, {{"775", "50xyz", "1"}, {1, 500, 1000}, 3, 3});
        EXPECT_EQ(Tables(), "775 50x 1 1#> 1-500 500#> 500-1000 1000#> 1000-9999999 ");
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(ClassTable[3])), Padded("", 6));
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(WeightBreakName[3])), Padded("", 11));
        EXPECT_EQ(+context_.WeightBreakTotal, 3);
        Set(mode, {{}, {123456, 12345678, -123456}, 0, 3});
        EXPECT_EQ(Tables(), "12345#> 12345-1234567 12345#> 12345--123456 -1234#> -1234-9999999 ");
        Set(mode, {{}, {}, 21, 32767});
        EXPECT_EQ(std::pair(+context_.ClassCount, +context_.WeightBreakCount), std::pair(20, 20));
        Set(mode, {{}, {}, -3, -1});
        EXPECT_EQ(Tables(), "");
        Set(mode, {{"FAK", "B"}, {1, 500}, 2, 2});  // Freight of all kinds.
        EXPECT_EQ(Tables(), standard_classes_ + "1#> 1-500 500#> 500-9999999 ");
        EXPECT_EQ(RateRecordBytes().substr(1676, 12), Padded("500", 6) + Padded("400", 6));
        EXPECT_EQ(RateRecordBytes().substr(1876, 4), std::string("\x12\0\2\0", 4));
    }
    EXPECT_EQ(engine_.calls, std::vector<std::string>(5, "tables"));
}

TEST_F(ClassesAndWeightsTest, TheEngineIsAskedForTheTariffOfTheDate) {
    engine_.tables = [](EngineTablesRecord& record) {
        std::string expected(222, '\0');
        Put(expected, 204, "TARIFF0101-31-2024");
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&record), sizeof record), expected);
        record.Tables = {{"FAK"}, {5}, 1, 1};
        return 0;
    };
    SetClassesAndWeights(&context_, kTablesFromRequest, 0);
    EXPECT_EQ(Tables(),
              "FAK 5#> 5-9999999 ");  // Only the answer's list makes it all kinds.
    EXPECT_TRUE(recorded_.boxes == (std::vector<RecordedBoxes::Box>{
                                       {nullptr, "(GetTablesEx)Error getting Classes/Weights",
                                        platform::ApplicationName(), platform::kBoxOk}}));
    EXPECT_EQ(+context_.ErrorCode, 0);
}

TEST_F(ClassesAndWeightsTest, AnUnusableTariffNameSelectsTheStandardTables) {
    for (const char* name : {"ABC DEFG", "ABCDEFG"}) {
        PutText(context_.TariffName, name);
        for (const int32_t mode : {0, 1, 2}) {
            context_.ClassCount = context_.WeightBreakCount = 0;
            Set(mode, {{"FAK", "x"}, {1}, 2, 1});
            EXPECT_EQ(Tables(), standard_classes_ + standard_breaks_) << name << mode;
        }
    }
    EXPECT_TRUE(engine_.calls.empty());
}

TEST_F(ClassesAndWeightsTest, WeightBreaksOfATariffFileAndAllWithTheEngineOffAreLeftAlone) {
    context_.WgtLoaded = 1;
    context_.WeightBreakCount = context_.WeightBreakTotal = 4;
    for (const int32_t mode : {0, 1, 2}) {
        const auto before = std::make_unique<RateContext>(context_);
        context_.UseEngine = before->UseEngine = 0;
        SetClassesAndWeights(&context_, mode, 0);
        ExpectAlikeOutside({}, *before, context_);
        context_.UseEngine = before->UseEngine = 1;
        Set(mode, {{"50"}, {1, 500}, 1, 2});
        EXPECT_EQ(+context_.ClassCount, mode == 0 ? 18 : 1);
        EXPECT_EQ(+context_.ClassWeightsSet, 1);
        context_.ClassWeightsSet = 0;
        ExpectAlikeOutside(
            {HWT_FIELD(ClassTable), HWT_FIELD(ClassCount), HWT_FIELD(ClassWeightsSet)}, *before,
            context_);
    }
}

TEST_F(ClassesAndWeightsTest, TheDefaultsMayCutTheList) {
    for (const auto& [index, count, left] :
         Table<3>("6 1 7  6 . 9  0 1 1  0 0 9  7 1 8  7 2 9  8 0 8  9 -2 9  -1 1 9  -1 2 1  8 -7 1 "
                  "x 3 3")) {
        PutText(context_.DefBreakIndex, index);
        PutText(context_.DefBreakCount, count);
        Set(0);
        const std::size_t kept = std::stoul(left);
        EXPECT_EQ(+context_.WeightBreakCount, kept) << index << ' ' << count;
        EXPECT_EQ(+context_.WeightBreakTotal, 9);
        EXPECT_EQ(+context_.WeightBreakMax[kept - 1], 9999999);
        EXPECT_EQ(Printed(context_.WeightBreakName[kept]), kept < 9 ? "XXX" : "");
    }
}

}  // namespace hundredweight
