#include "rating/rating_run.h"

#include "rating/engine_status.h"
#include "support/recorded_boxes.h"
#include "support/scripted_engine.h"

namespace hundredweight {

struct RatingRunTest : RatingTest {
    RatingRunTest() {
        engine_.rate = [this](EngineResultBlock& block) {
            request_ = RateRecordBytes();
            Answer(3, status_);
            block.Verdict = verdict_;
        };
        engine_.error_text = [this](char* buffer) {
            EXPECT_EQ(buffer, status_);
            memcpy(buffer, text_.data(), text_.size());
            return text_.empty() ? nullptr : buffer;
        };
    }
    /// What a rating run tells; "=" before it when it wrote the charges. Then the engine's calls.
    std::string Rate(int32_t old_code = 0) {
        context_.ErrorCode = old_code;
        FillField(context_.GrossChargeText, '#');
        recorded_.told.clear();
        engine_.calls.clear();
        const std::string told = Told(context_, RateShipment(&context_, 7, 0)) + engine_.calls;
        return Printed(context_.GrossChargeText) == "       0.00" ? '=' + told : told;
    }
    std::string request_, status_ = "    ", text_ = "Message";
    int32_t verdict_ = 0;
    RecordedBoxes recorded_;
};

TEST_F(RatingRunTest, AnAnswerIsRatedUnlessItsVerdictIsMinusOne) {
    context_.EngineListCount = 4;
    for (const std::string_view status : {"    ", "9999", ""}) {
        status_ = Padded(status, 4);
        EXPECT_EQ(Rate(133), "=0:133 rate tables");
        EXPECT_EQ(request_.substr(3, 4), "    ");
    }
    EXPECT_EQ(+context_.EngineListCount, 0);
    verdict_ = -1;
    status_ = "0200";
    EXPECT_EQ(Rate(77), "9999:133 rate tables");
    context_.QuietEngineErrors = 1;
    EXPECT_EQ(Rate(77), "9999:77 rate tables");
    EXPECT_EQ(recorded_.told, "");
}

TEST_F(RatingRunTest, EveryClassOfStatusCode) {
    engine_.list = [](EngineListBlock& block) { block.Count = 0; };
    // States and cities of points without a city, whose states the answer leaves alone.
    const std::size_t points[] = {offsetof(RateContext, OrigState),
                                  offsetof(RateContext, DestState)};
    const std::string none = Padded("None of the above", 31, '#'), blanks(34, ' ');
    // Quiet, no postal code, no text; the code before; what is told, a box, blanked points.
    for (const auto& [status, given, old_code, told, box, blanked] :
         Table<6>("0011 . 0 =9999:-1_rate_tables_text 1 #  0200 . 0 =9999:-1_rate_tables_text 1 _  "
                  "0122 . 0 =9999:-1_rate_tables_text 1 _  0127 . 0 =9999:-1_rate_tables_text 1 _  "
                  "WXYZ . 0 =9999:-1_rate_tables_text 1 _  0200 quiet 0 =9999:-1_rate_tables 0 #  "
                  "0200 zip 133 =0:0_rate_tables 0 #  0200 text 77 =0:77_rate_tables_text 0 _  "
                  "0200 text 134 =9999:134_rate_tables_text 0 _  "
                  "0123 . 77 =0:77_rate_tables_text_list_tables 0 #  "
                  "0124 . -1 =9999:-1_rate_tables_text_list_tables 0 #  "
                  "0125 . 133 =9999:133_rate_tables_text_list_tables 0 #  "
                  "0126 . 134 =9999:134_rate_tables_text_list_tables 0 #")) {
        status_ = status;
        text_ = given == "text" ? "" : "Message";
        context_.QuietEngineErrors = given == "quiet";
        PutText(context_.DestZip, given == "zip" ? "" : "90210");
        for (const std::size_t point : points) Fill(context_, {point, 3}, '#');
        CopyText(context_.OrigCity, none);
        CopyText(context_.DestCity, none);
        EXPECT_EQ(Rate(std::stoi(old_code)), told) << status;
        for (const std::size_t point : points)
            EXPECT_EQ(BytesOf(context_, {point, 34}), blanked == "#" ? "###" + none : blanks)
                << status;
        EXPECT_EQ(recorded_.told, box == "1" ? "48:TOLVEX Warning:Message;" : "") << status;
    }
}

TEST_F(RatingRunTest, MessagesBearTheirCodeOnceAndFitTheirBuffer) {
    const std::string tail(85, 'x');
    status_ = "0011";
    for (const auto& [text, shown] : Table<2>(
             "01230123Not_served 0123_Not_served  0200Origin 0200_Origin  Origin_0200 Origin_0200 "
             "0200 0200_  0200_Origin 0200__Origin  0000Origin 0000Origin  abcd0200Origin "
             "0200_Origin  0200" +
             tail + " 0200_" + tail.substr(1) + ' ' + tail + "yyyyz " + tail + "yyyy")) {
        text_ = text.size() < 90 ? text + '\0' : text;
        Rate();
        EXPECT_EQ(recorded_.told, "48:TOLVEX Warning:" + shown + ';');
    }
}

TEST_F(RatingRunTest, AlternativesAreFetched) {
    status_ = "0124";
    const Span fields{offsetof(RateContext, EngineListHeader), 6 + 4 + 25 * 20};
    for (const auto& [count, kept] :
         {std::pair{3, 3}, {25, 25}, {26, 25}, {INT32_MAX, 25}, {-5, 0}, {-1, 0}}) {
        engine_.list = [offered = count](EngineListBlock& block) {
            block.Count = offered;
            CopyText(block.Header, "header");
            for (int i = 0; i < 40; ++i) memset(&block.Entries[i], 'A' + i, 19);
            AnswerNumber<int32_t>(1796, 750);
            Answer(1876, {"\1\0\1\0", 4});
        };
        Fill(context_, fields, '#');
        EXPECT_EQ(Rate(77).substr(0, 8), count == -1 ? "=9999:13" : "=0:77 ra") << count;
        EXPECT_EQ(+context_.WeightBreakMin[0], 750);  // The tables are the second answer's.
        std::string list = count == -1 ? "######" : "header";
        list.append({static_cast<char>(kept), 0, 0, 0});
        for (int i = 0; i < 25; ++i)
            list += std::string(19, static_cast<char>(i < kept ? 'A' + i : '#')) + '#';
        EXPECT_EQ(BytesOf(context_, fields), list);
    }
}

TEST_F(RatingRunTest, TheWeightBreakCutIsWrittenIntoItsDiscountSlot) {
    for (const auto& [index, count, at] :
         Table<3>("5 2 42  6 2 47  -2 1 2  . 2 17  -3 1 .  7 2 .  999 999 .  5 . .")) {
        PutText(context_.DefBreakIndex, index);
        PutText(context_.DefBreakCount, count);
        Rate();
        std::string lines(108, ' ');
        if (!at.empty())
            for (const std::size_t line : {0U, 54U}) Put(lines, std::stoul(at) + line, " 9999");
        EXPECT_EQ(request_.substr(865, 108), lines) << index;
    }
}

TEST_F(RatingRunTest, TablesComeFromTheAnswerWhenItsCountsAreUsable) {
    for (const auto& [classes, breaks, calls] :
         Table<3>("1 1 _rate  20 9 _rate  21 9 _rate_tables  20 10 _rate_tables  0 1 _rate_tables "
                  "1 0 _rate_tables  -1 1 _rate")) {
        AnswerNumber(1876, static_cast<int16_t>(std::stoi(classes)));
        AnswerNumber(1878, static_cast<int16_t>(std::stoi(breaks)));
        EXPECT_EQ(Rate(), "=0:0" + calls) << classes;
    }
}

}  // namespace hundredweight
