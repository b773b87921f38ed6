#include "rating/request.h"

#include <cmath>

#include "support/scripted_engine.h"
#include "tariff/name_tables.h"

namespace hundredweight {

struct RequestTest : RatingTest {
    RequestTest() {
        CopyText(context_.OrigState, "NY");
        PutText(context_.OrigCity, "SCHENECTADY AND ALL ITS TOWNS");
        CopyText(context_.DestState, "CA");
        PutText(context_.DestCity, "BEVERLY HILLS");
        context_.ShipmentOptionA = 's';
        context_.EngineOptionCode = 'o';
        context_.DefByte31 = 'd';
        for (const auto& [line, class_text, weight] : Table<3>("0 100 500 1 77.55 1234567 7 . 7")) {
            CopyText(context_.LineClass[std::stoi(line)], class_text);
            CopyText(context_.LineWeight[std::stoi(line)], weight);
        }
        CopyText(context_.ClassTable[3], "250");
        context_.LineClassIndex[1] = 3;
        Answer(0, unwritten_);
        const std::string head = "F01     MF1TARIFF01N01-31-202412345 NYSCHENECTADY AND A90210 CA";
        Put(expected_, 0, Padded(head, 263, ' ') + "\r\n");
        for (std::size_t line = 265; line < 505; line += 30)
            Put(expected_, line, "02" + Padded("", 3) + "000000" + Padded("", 16) + "\r\n ");
        for (const auto& [at, size] :
             {std::pair{505U, 360U}, {867U, 50U}, {921U, 50U}, {1880U, 30U}})
            Put(expected_, at, std::string(size, ' '));
        Put(expected_, 1912, std::string(244, '\0') + "   *");
        Put(expected_, 63, Padded("BEVERLY HILLS", 17));
        for (const auto& [at, text] : Table<2>("80 07 177 s 194 N 236 10000 267 100000500 297 "
                                               "77.123456 480 000007 973 ___"))
            Put(expected_, std::stoul(at), text);
    }
    /// Expects the whole request, with one more text in it than the last.
    void Expect(std::size_t offset, const std::string& written) {
        Put(expected_, offset, written);
        Answer(0, unwritten_);
        EXPECT_EQ(PrepareEngineRequest(context_, 7), 1);
        EXPECT_EQ(RateRecordBytes(), expected_) << written;
    }
    const std::string unwritten_ = std::string(2160, '?');
    std::string expected_ = unwritten_;  // '?' where the library leaves the record alone.
};

TEST_F(RequestTest, IsWrittenByteForByte) {
    // RateFactor, ConversionOn, ConversionRate and the factor sent.
    for (const auto& [factor, conversion_on, conversion, digits] :
         Table<4>("1 0 0 10000  0 0 0 10000  1.05 0 0 10500  .95 0 0 09500  1.10015 0 0 11002 "
                  "1.10025 0 0 11002  12.5 0 0 12500  1.1 1 1.25 13750  0 1 1.25 12500 "
                  ".5 1 2 10000  1.5 0 2 15000")) {
        context_.RateFactor = std::stof(factor);
        context_.ConversionOn = conversion_on == "1";
        context_.ConversionRate = std::stof(conversion);
        Expect(236, digits);
    }
    for (const auto& [mapped, mark, code] : Table<3>("1 . 77.  1 * 250  0 * 77.")) {
        context_.Profile.ClassMapOn = mapped == "1";
        context_.LineClassMark[1][0] = mark.c_str()[0];
        Expect(297, code);
    }
    context_.EngineOptionOn = -1;
    Expect(19, "o");
    PutText(context_.OrigCity, "None of the above");
    Expect(36, "**None of the above");
    PutText(context_.DestCity, "None of the above!");
    Expect(61, "**None of the above");
    PutText(context_.DestZip, "K1A0A1");
    Expect(55, "K1A0A1");
    context_.DiscountFlatPercent = 150;  // Discounts that are off may be anything.
    Expect(194, "N");
    context_.DiscountOn = -1;
    const float percentages[10] = {45.5F, 5, 0, 99.99F, 12.345F, 33.335F, 1, 2, 3, 4};
    const Span percents{offsetof(RateContext, DiscountFlatPercent), sizeof percentages};
    memcpy(reinterpret_cast<char*>(&context_) + percents.offset, percentages, percents.size);
    const std::string values = " 4550 0500 0000 9999 1234 3334 0100 0200 0300 0400";
    Put(expected_, 194, "Y");
    Put(expected_, 214, "d");
    Expect(865, "D%" + values + "\r\nI%" + values);
    for (const auto& [code, digits] : {std::pair{0, "00"}, {123, "12"}, {-5, "-5"}}) {
        PrepareEngineRequest(context_, code);
        EXPECT_EQ(RateRecordBytes().substr(80, 2), digits);
    }
}

TEST_F(RequestTest, NothingIsWrittenForPercentagesThatDoNotFitOrWithTheEngineOff) {
    context_.DiscountOn = 1;
    for (const float percent : {100.0F, 99.996F, -5.0F, 1e30F, NAN, INFINITY})
        for (const bool flat : {true, false}) {
            context_.DiscountFlatPercent = flat ? percent : 0;
            context_.DiscountBreakPercent[8] = flat ? 0 : percent;
            EXPECT_EQ(Told(context_, RateShipment(&context_, 7, 0)), "9999:118") << percent;
        }
    context_.UseEngine = 0;
    context_.EngineListCount = 3;
    EXPECT_EQ(Told(context_, RateShipment(&context_, 7, 0)), "1:0");
    EXPECT_EQ(+context_.EngineListCount, 0);
    EXPECT_EQ(RateRecordBytes(), unwritten_);
    EXPECT_TRUE(engine_.calls.empty());
}

TEST_F(RequestTest, LoadedNameTablesGiveTheTariffName) {
    WriteFile("ABC.CBS", "12345 12345 POINT190210 90210 POINT2");
    WriteFile("ABC.CMT", "POINT1POINT2TABLED12");
    ASSERT_EQ(ReadNameTables(context_), 1);
    const std::string blanks = '?' + std::string(264, ' ') + std::string(1895, '?');
    for (const auto& [loaded, destination, told, tariff_name] :
         Table<4>("N 00000 1:0 TARIFF01  Y 90210 1:0 TABLED12  Y 00000 0:501 ________ "
                  "Y 12345 0:103 ________")) {
        context_.NameTablesLoaded = loaded[0];
        PutText(context_.DestZip, destination);
        Answer(0, unwritten_);
        EXPECT_EQ(Told(context_, PrepareEngineRequest(context_, 7)), told);
        EXPECT_EQ(RateRecordBytes().substr(11, 8), tariff_name);
        EXPECT_EQ(RateRecordBytes() == blanks, told[0] == '0');
    }
    EXPECT_EQ(RateShipment(&context_, 7, 0), 9999);
    EXPECT_TRUE(engine_.calls.empty());
}

}  // namespace hundredweight
