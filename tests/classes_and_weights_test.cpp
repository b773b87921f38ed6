#include "rating/classes_and_weights.h"

#include "platform/message_box.h"
#include "support/recorded_boxes.h"
#include "support/scripted_engine.h"

namespace hundredweight {

struct ClassesAndWeightsTest : RatingTest {
    /// Tables of a mode, when both the engine's answer and the engine have the section: the
    /// classes, then each weight break's name, lowest and highest weight.
    std::string Set(int32_t mode, const EngineTablesSection& section = {}) {
        AnswerNumber(1676, section);
        engine_.tables = [section](EngineTablesRecord& record) {
            record.Tables = section;
            return 1;
        };
        SetClassesAndWeights(&context_, mode, 0);
        std::string list;
        for (int i = 0; i < context_.ClassCount; ++i) list += Printed(context_.ClassTable[i]) + ' ';
        for (int i = 0; i < context_.WeightBreakCount; ++i)
            list += Joined(Printed(context_.WeightBreakName[i]), context_.WeightBreakMin[i],
                           context_.WeightBreakMax[i]) +
                    ' ';
        return list;
    }
    const std::string classes_ = "500 400 300 250 200 175 150 125 110 100 92 85 77 70 65 60 55 50 ";
    RecordedBoxes recorded_;
};

TEST_F(ClassesAndWeightsTest, ComeFromTheAnswerOrFromTheEngine) {
    for (const int32_t mode : {kTablesFromRequest, kTablesFromAnswer}) {
        Fill(context_, HWT_FIELD(ClassTable), '#');
        EXPECT_EQ(Set(mode, {{"775", "50xyz", "1"}, {1, 500, 1000}, 3, 3}),
                  "775 50x 1 1#>:1:500 500#>:500:1000 1000#>:1000:9999999 ");
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(ClassTable[3])), Padded("", 6));
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(WeightBreakName[3])), Padded("", 11));
        EXPECT_EQ(+context_.WeightBreakTotal, 3);
        EXPECT_EQ(Set(mode, {{}, {123456, 12345678, -123456}, 0, 3}),
                  "12345#>:12345:1234567 12345#>:12345:-123456 -1234#>:-1234:9999999 ");
        Set(mode, {{}, {}, 21, 32767});
        EXPECT_EQ(Joined(context_.ClassCount, context_.WeightBreakCount), "20:20");
        EXPECT_EQ(Set(mode, {{}, {}, -3, -1}), "");
        EXPECT_EQ(Set(mode, {{"FAK", "B"}, {1, 500}, 2, 2}),  // Freight of all kinds.
                  classes_ + "1#>:1:500 500#>:500:9999999 ");
        EXPECT_EQ(RateRecordBytes().substr(1676, 12), Padded("500", 6) + Padded("400", 6));
        EXPECT_EQ(RateRecordBytes().substr(1876, 4), std::string("\x12\0\2\0", 4));
    }
    EXPECT_EQ(engine_.calls, " tables tables tables tables tables");
}

TEST_F(ClassesAndWeightsTest, TheEngineIsAskedForTheTariffOfTheDate) {
    engine_.tables = [this](EngineTablesRecord& record) {
        std::string expected(222, '\0');
        Put(expected, 204, "TARIFF0101-31-2024");
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&record), sizeof record), expected);
        record.Tables = {{"FAK"}, {5}, 1, 1};
        return 0;
    };
    SetClassesAndWeights(&context_, kTablesFromRequest, 0);
    // Only the answer's list makes it all kinds.
    EXPECT_EQ(Joined(context_.ClassCount, Printed(context_.ClassTable[0])), "1:FAK");
    EXPECT_EQ(recorded_.told, Joined(platform::kBoxOk, platform::ApplicationName(),
                                     "(GetTablesEx)Error getting Classes/Weights;"));
    EXPECT_EQ(+context_.ErrorCode, 0);
}

TEST_F(ClassesAndWeightsTest, AnUnusableTariffNameSelectsTheStandardTables) {
    for (const char* name : {"ABC DEFG", "ABCDEFG"})
        for (const int32_t mode : {0, 1, 2}) {
            PutText(context_.TariffName, name);
            context_.ClassCount = context_.WeightBreakCount = 0;
            EXPECT_EQ(Set(mode, {{"FAK", "x"}, {1}, 2, 1}),
                      classes_ +
                          "L5C:0:499 M5C:500:999 M1M:1000:1999 M2M:2000:4999 M5M:5000:9999 "
                          "M10M:10000:19999 M20M:20000:29999 M30M:30000:39999 M40M:40000:9999999 ");
        }
    EXPECT_EQ(engine_.calls, "");
    PutText(context_.DefBreakIndex, "6");  // The defaults may cut the list.
    PutText(context_.DefBreakCount, "1");
    Set(0);
    EXPECT_EQ(Joined(context_.WeightBreakCount, context_.WeightBreakTotal,
                     context_.WeightBreakMax[6], Printed(context_.WeightBreakName[7])),
              "7:9:9999999:XXX");
}

TEST_F(ClassesAndWeightsTest, WeightBreaksOfATariffFileAndAllWithTheEngineOffAreLeftAlone) {
    context_.WgtLoaded = 1;
    context_.WeightBreakCount = context_.WeightBreakTotal = 4;
    for (const int32_t mode : {0, 1, 2}) {
        context_.UseEngine = 0;
        {
            const Untouched all{context_, {}};
            SetClassesAndWeights(&context_, mode, 0);
        }
        context_.UseEngine = 1;
        context_.ClassWeightsSet = 0;
        const Untouched rest{
            context_, {HWT_FIELD(ClassTable), HWT_FIELD(ClassCount), HWT_FIELD(ClassWeightsSet)}};
        Set(mode, {{"50"}, {1, 500}, 1, 2});
        EXPECT_EQ(Joined(context_.ClassCount, context_.ClassWeightsSet),
                  mode == 0 ? "18:1" : "1:1");
    }
}

}  // namespace hundredweight
