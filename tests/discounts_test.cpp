#include "discounts/discount_sources.h"
#include "support/table.h"

namespace hundredweight {

/// Groups of percentages 10.5 to 90.5, flat 5 and floor 100, plus the group's number; entered
/// values; a profile with a ZIP-range record for TX to OK behind an empty one.
struct DiscountsTest : TariffTest {
    DiscountsTest() {
        for (char group = '0'; group < '4'; ++group) {
            std::string text;
            for (char column = '1'; column <= '9'; ++column)
                text += {column, group, '.', '5', ' ', ' '};
            text += {' ', ' ', '5', '.', group, '0', '1', '0', '0', '.', group, '0', '0'};
            CopyText(context_.DisColumns[group - '0'], text);
        }
        context_.DisGroupSelector = '4';
        context_.DiscBreakCount = 2;
        CopyText(context_.EntryFlatPercent, "123456");
        CopyText(context_.EntryFloor, "7654.25");
        PutRange(1, {"       ", "TX", "", "OK"});
        for (auto& percent : context_.Profile.ZipDiscounts[1].BreakPercent)
            CopyText(percent, "44.5");
        CopyText(context_.Profile.ZipDiscounts[1].FlatPercent, "  8.25  ");
        CopyText(context_.Profile.ZipDiscounts[1].Floor, " 55.5  ");
        context_.Profile.ZipDiscountCount = 2;
        context_.DiscountOn = -1;
        SetPoints("12345", "12345", "TXOK");
    }
    void PutRange(std::size_t number, const std::array<std::string, 4>& range) {
        std::string bytes;
        for (const std::string& text : range) bytes += Padded(text, 7);
        bytes.resize(sizeof(ZipDiscountRecord));
        memcpy(&context_.Profile.ZipDiscounts[number], bytes.data(), bytes.size());
    }
    void SetPoints(const std::string& origin, const std::string& destination, std::string states) {
        CopyText(context_.OrigZip, Padded(origin, 7));
        CopyText(context_.DestZip, Padded(destination, 7));
        CopyText(context_.OrigState, states.substr(0, 2));
        CopyText(context_.DestState, states.substr(2));
    }
    /// The list that LoadDiscounts, which writes nothing else, makes of ones and texts.
    std::string ListAfter(HostDiscountTable* table, int32_t mode) {
        const Span list{offsetof(RateContext, DiscountFloor), 44},
            flat = HWT_FIELD(DiscountFlatText), floor = HWT_FIELD(DiscountFloorText),
            source = HWT_FIELD(DiscountSource);
        std::array<float, 11> values;
        values.fill(1);
        memcpy(reinterpret_cast<char*>(&context_) + list.offset, values.data(), list.size);
        for (const Span& text : {flat, floor, source}) Fill(context_, text, '#');
        const Untouched rest{context_, {list, flat, floor, source}};
        LoadDiscounts(&context_, table, mode);
        memcpy(values.data(), BytesOf(context_, list).data(), list.size);
        std::string told;
        for (std::size_t i = 0, alike = 1; i < 11; ++i, ++alike) {
            if (i < 10 && values[i] == values[i + 1]) continue;
            told += Joined(values[i]) + (alike > 1 ? 'x' + std::to_string(alike) : "") + ' ';
            alike = 0;
        }
        return told + context_.DiscountSource + '|' + Printed(context_.DiscountFlatText) + '|' +
               Printed(context_.DiscountFloorText);
    }
};

TEST_F(DiscountsTest, TheFileHasUpToNineWeightColumns) {
    context_.DiscBreakCount = 5;
    EXPECT_EQ(Told(context_, ReadDiscFile(&context_)), "0:250");
    WriteFile("ABC.DIS", std::string(604, '1'));
    EXPECT_EQ(Told(context_, ReadDiscFile(&context_)), "0:254");
    EXPECT_EQ(std::string(context_.DiscRecord, 604), std::string(604, '1'));
    EXPECT_EQ(+context_.DiscBreakCount, 5);
    for (const auto& [marks, count] : Table<2>(R"(_11111111 0  011111111 0  1_1111111 1  111011111 3
             XXXXXXXX_ 8  111111111 9)")) {
        std::string record(900, '1');
        for (std::size_t i = 0; i < 9; ++i) record[112 + 25 * i] = marks[i] == '0' ? 0 : marks[i];
        WriteFile("ABC.DIS", record);
        EXPECT_EQ(Told(context_, ReadDiscFile(&context_)), "1:0");
        EXPECT_EQ(std::string(context_.DiscRecord, 605), record.substr(0, 605));
        EXPECT_EQ(+context_.DiscBreakCount, std::stoi(count)) << marks;
    }
}

TEST_F(DiscountsTest, SelectorServiceAndStatesChooseTheGroup) {
    for (const auto& [selector, groups] :
         Table<2>("1 0000 2 0011 3 0101 4 0123 5 2031 0 0000 6 0000 _ 0000 . 0000"))
        // Service codes, the destination's state, and which of the four groups it is.
        for (const char* shipment : {"DDNYx0", "DDNJx1", "DDPYx1", "DINYx2", "IDNYx2", "ddNJx3"}) {
            context_.DisGroupSelector = selector.c_str()[0];
            context_.OrigServiceCode = shipment[0];
            context_.DestServiceCode = shipment[1];
            SetPoints("", "", "NY" + std::string(shipment, 2, 3));
            const char group = groups[static_cast<std::size_t>(shipment[5] - '0')];
            EXPECT_EQ(SelectDiscountGroup(context_), group - '0') << selector << shipment;
        }
}

TEST_F(DiscountsTest, LaterSourcesReplaceEarlierOnesInTheColumnsInUse) {
    // Switched on: C, P, Z, n no flat discounts, - none at all; x from OK to TX. Columns,
    // percentage.
    for (const auto& [on, columns, entered, list] : Table<4>(R"(
        . 2 5 0x4_1x7_#||     CPZ- 2 5 0x4_1x7_#||      . 0 5 0x2_1x9_#||   . -1 5 0x2_1x9_#||
        . 9 5 0x11_#||        . 10 5 0x11_#||           . 2147483647 5 0x11_#||
        . -2147483648 5 0x2_1x9_#||
        C 2 5 100.3_5.3_13.5_23.5_1x7_C|__5.30|100.300  Cn 2 5 100.3_0_13.5_23.5_1x7_C||100.300
        P 2 5 7654.25_123456_5x2_1x7_P|123456|7654.25   Pn 2 5 7654.25_0_5x2_1x7_P||7654.25
        CP 2 5 7654.25_123456_5x2_1x7_P|123456|7654.25  Z 2 5 55.5_8.25_44.5x9_Z||_55.5__
        CPZx 2 5 7654.25_123456_5x2_1x7_P|123456|7654.25  Zn 2 5 55.5_0_44.5x9_Z||_55.5__
        CZ 2 5 55.5_8.25_44.5x9_Z|__5.30|_55.5__        CPZ 2 5 55.5_8.25_44.5x9_Z|123456|_55.5__
        Pn 1 ______ 7654.25_0x2_1x8_P||7654.25          Pn 1 . 7654.25_0x2_1x8_P||7654.25
        Pn 2 _12.5x 7654.25_0_12.5x2_1x7_P||7654.25     Pn 1 nan 7654.25_0x2_1x8_P||7654.25
        Pn 1 -1.25 7654.25_0_-1.25_1x8_P||7654.25       Pn 1 0x1F 7654.25_0x2_1x8_P||7654.25
        Pn 9 12,5 7654.25_0_12x9_P||7654.25             Pn 10 7 7654.25_0_7x9_P||7654.25
        Pn 2147483647 7 7654.25_0_7x9_P||7654.25        Pn -1 7 7654.25_0_1x9_P||7654.25)")) {
        context_.Profile.DiscModeC = Has(on, 'C') ? 256 : 0;
        context_.Profile.DiscModeP = Has(on, 'P') ? -1 : 0;
        context_.DefModeZ = Has(on, 'Z') ? 256 : 0;
        context_.Profile.DiscModeZ = !Has(on, 'Z');
        context_.NoFlatDiscountFlag = Has(on, 'n') ? 'Y' : 'N';
        context_.DiscountOn = Has(on, '-') ? 0 : 256;
        context_.DiscBreakCount = std::stoi(columns);
        CopyText(context_.EntryDiscountPercent, Padded(entered, 6));
        SetPoints("12345", "12345", Has(on, 'x') ? "OKTX" : "TXOK");
        EXPECT_EQ(ListAfter(nullptr, 0), list) << on << columns << entered;
    }
}

TEST_F(DiscountsTest, ZipRangesMatchTheirFirstRecord) {
    std::size_t number = 0;
    for (const auto& range : Table<4>(R"(
        _____99 TX . OK  12000 12999 20000 20999  12500 12500 20000 29999  K1A0A K1A9Z 30000 39999
        ___12 NY ZZ NJ   120 129 K1A K1B          . . . .)"))
        PutRange(number++, range);
    for (std::size_t i = 0; i < number; ++i)
        context_.Profile.ZipDiscounts[i].Floor[0] = static_cast<char>('1' + i);
    // Length, postal codes, states; the number of the record, or 0.
    for (const auto& [length, origin, destination, states, record] : Table<5>(R"(
        5 99999 99999 TXOK 1   5 99999 99999 OKTX 0  5 12000 20999 ---- 2  5 12999 20000 ---- 2
        5 13000 20000 ---- 0   5 12500 20500 ---- 2  5 12500 21000 ---- 3  5 11999 20000 ---- 0
        5 12500x 21000 TXOK 1  5 12500 30000 ---- 0  5 K1A 30000 ---- 4    5 K1A5 30000 ---- 4
        5 K1B 30000 ---- 0     5 123 20000 ---- 2    5 99999 99999 NYNJ 0  3 99999 99999 NYNJ 5
        3 12999 20999 ---- 2   3 12345 20000 ---- 2  3 12999 K1B9Z ---- 6  3 12999 K1C ---- 0
        6 12345 K1A ---- 6     5 . . ---- 7          5 K1A9z 30000 ---- 0)")) {
        context_.ZipLength[0] = length[0];
        SetPoints(origin, destination, states);
        const int32_t matched = std::stoi(record);
        for (const int32_t count : {7, 150, 151, 2147483647, matched - 1, -1}) {
            context_.Profile.ZipDiscountCount = count;
            context_.DiscountFloor = 0;
            const int32_t found = matched > 0 && count >= matched;
            EXPECT_EQ(ApplyZipDiscount(context_), found) << length << origin << destination;
            EXPECT_EQ(+context_.DiscountFloor, static_cast<float>(found * matched));
        }
    }
    std::string beyond(104, ' ');  // A 151st record would match, which begins with the count.
    Put(beyond, 7, "TX");
    Put(beyond, 21, "OK");
    memcpy(reinterpret_cast<char*>(&context_.Profile) + 17793, beyond.data(), 104);
    PutRange(0, {});
    SetPoints("12345", "12345", "TXOK");
    EXPECT_EQ(ApplyZipDiscount(context_), 0);
}

TEST_F(DiscountsTest, TheHostTableTakesTheGroups) {
    for (int i = 0; i < 9; ++i) {
        CopyText(context_.DisWeightColumns[i], "1234567890 " + std::to_string(i * 500));
        CopyText(context_.WgtRecords[i], "L5C      4990" + std::to_string(i == 1 ? 501 : i * 500));
    }
    context_.NoFlatDiscountFlag = 'Y';
    context_.DefModeZ = 1;
    context_.DiscountOn = 0;
    // Table type, selector, columns; floor, flat and three break percentages of the last group.
    for (const auto& [type, selector, columns, values] : Table<4>(R"(
        0 4 9 100.3:5.3:13.5:-1:33.5    2 1 2 100.3:5.3:13.5:-1:-1  1 4 9 100.3:13.5:13.5:-1:13.5
        1 1 9 100.3:10.5:13.5:-1:13.5   0 4 -1 100.3:5.3:-1:-1:-1   0 4 10 100.3:5.3:13.5:-1:33.5)")) {
        HostDiscountTable table{};
        table.TableType = static_cast<int16_t>(std::stoi(type));
        auto& last = table.Groups[3];
        for (int i = 0; i < 9; ++i) last.BreakPercent[i] = -1;
        context_.DisGroupSelector = selector[0];
        context_.DiscBreakCount = std::stoi(columns);
        EXPECT_EQ(ListAfter(&table, columns == "9" ? 1 : -1), "55.5 0 44.5x9 Z|######| 55.5  ");
        EXPECT_EQ(Joined(last.Floor, last.FlatPercent, last.BreakPercent[0], last.BreakPercent[1],
                         last.BreakPercent[2]),
                  values);
    }
}

}  // namespace hundredweight
