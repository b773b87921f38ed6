#include <climits>

#include "support/scripted_engine.h"

namespace hundredweight {

using ValidateTest = TariffTest;

TEST_F(ValidateTest, PostalCodesHaveAForm) {
    // Length, SkipZipTablesFlag, whether the codes pass.
    for (const auto& [length, skip, passes, list] : Table<4>(R"(
        5 N 1 K1A,k1a0b1,K?-,02134,02134x  5 N 0 -1234,_1234,(234,,K,K1,K1_,K1_0B1,0213A,0213
        5 Y 1 02134,02134M  5 Y 0 K1A0B1,k1a  3 N 1 021AB,021  3 N 0 02AAB,02  6 N 1 021345,02134M
        6 N 0 0213M,0213  . N 1 0,0ABCD  ABC N 1 0,0ABCD  -5 N 1 0  _5 N 0 0213A  7 N 0 021345
        99999 N 0 021345  00003 N 1 021AB  00003 N 0 02AAB)")) {
        FillField(context_.SetRecord, '9');  // No length is read beyond its field.
        CopyText(context_.ZipLength, Padded(length, 5));
        context_.SkipZipTablesFlag = skip[0];
        std::istringstream zips(list);
        for (std::string zip; std::getline(zips, zip, ',');) {
            SCOPED_TRACE(length + skip + zip);
            CopyText(context_.OrigZip, Padded(zip, 7));
            PutText(context_.DestZip, "?");
            EXPECT_EQ(Told(context_, VerOrigZip(&context_)), passes == "1" ? "1:0" : "0:101");
            std::swap(context_.OrigZip, context_.DestZip);
            EXPECT_EQ(Told(context_, VerDestZip(&context_)), passes == "1" ? "1:0" : "0:102");
        }
    }
}

TEST_F(ValidateTest, PairsOfPointsAreRatedOrNot) {
    // UseEngine; OrigIntrastate and the states; result, code and the two flags, which were 7.
    for (const auto& [origin, destination, engine_used, states, told] : Table<5>(R"(
        K1A0B1 V5K0A1 0 YMA_NY_ 0:266:7:7  k z 1 YMA_NY_ 0:266:7:7
        K1A0B1 02134 0 NMA_MA_ 1:0:1:7  02134 K1A0B1 0 NMA_MA_ 1:0:1:7
        02134M K1 0 YMA_NY_ 1:0:1:7  -2134 2 0 NMA_MA_ 1:0:1:7  K1A0B1 . 0 YMA_NY_ 1:0:1:7
        . . 0 NMA_MA_ 1:0:1:7  02134M 02134 0 NMA_MA_ 1:0:0:1  02134 02134M 0 NMA_MA_ 1:0:0:1
        02134M 2 256 NMA_MA_ 1:0:0:0  02134m 2 0 NMA_MA_ 0:103:0:0
        0213M 2 0 NMA_MA_ 0:103:0:0  2 2 1 NMA_MA_ 0:103:0:0  2 2 0 NMAxMAy 0:103:0:0
        2 2 0 NMA_ME_ 1:0:0:0  2 2 0 NMA_PA_ 1:0:0:0  2 2 0 nMA_MA_ 1:0:0:0
        2 2 0 YMA_MA_ 1:0:0:0)")) {
        CopyText(context_.OrigZip, Padded(origin, 7));
        CopyText(context_.DestZip, Padded(destination, 7));
        context_.UseEngine = std::stoi(engine_used);
        context_.OrigIntrastate = states[0];
        context_.DestIntrastate = 'N';
        CopyText(context_.OrigState, states.substr(1, 3));
        CopyText(context_.DestState, states.substr(4));
        context_.OrigTerritory = context_.DestTerritory = 'B';
        context_.CrossBorder = context_.MexicoShipment = 7;
        const std::string result = Told(context_, VerTerritory(&context_));
        EXPECT_EQ(Joined(result, context_.CrossBorder, context_.MexicoShipment), told)
            << origin << destination << states;
    }
    for (int codes = 0; codes < 0x10000; ++codes) {
        const char origin = context_.OrigTerritory = static_cast<char>(codes);
        const char destination = context_.DestTerritory = static_cast<char>(codes >> 8);
        const bool both_x = origin == 'X' && destination == 'X';
        const bool passes = Has("FBXY", origin) && Has("TBXY", destination) && !both_x;
        EXPECT_EQ(Told(context_, VerTerritory(&context_)), passes ? "1:0" : "0:103") << codes;
    }
}

struct StateTest : RatingTest {
    StateTest() {
        for (const auto& [prefix, record] : Table<2>(R"(1 AAab 2 BBcd 5 EEef 6 PRgh 12 LLij 21 MAkl
                 300 YYmn 301 XXop 967 HIqr 995 AKst 999 ZZuv)"))
            memcpy(context_.ScTable[std::stoi(prefix) - 1], record.data(), 4);
        context_.SccTable = static_cast<unsigned char*>(malloc(40));
        memcpy(context_.SccTable, "HIH00H99ONK1AK9ZXXL00L99YYL9AM99AAZ00\xFE\xFE\xFE", 40);
        context_.SccCount = 5;
        context_.TariffSourceCode = '2';
        engine_.state = [](char* letters, const char*) { return memcpy(letters, "NY", 2), 1; };
    }
    /// Result and code, which was 77; state and attributes, which were dashes.
    std::string StateOf(const std::string& zip) {
        const std::vector<char> block(zip.c_str(), zip.c_str() + zip.size() + 1);
        char state[] = "-----";
        context_.ErrorCode = 77;
        return Told(context_, GetStateCode(&context_, block.data(), state, state + 3, state + 4)) +
               ':' + state;
    }
};

TEST_F(StateTest, StatesStandInTheTablesOrComeFromTheEngine) {
    for (const auto& [zip, state] : Table<2>(R"(
        02134 1:77:MA-kl   021 1:77:MA-kl     02134M 1:77:MX---  0213M 1:77:MA-kl  02134Mx 1:77:MA-kl
        02134m 1:77:MA-kl  K1A0BM 1:77:MX---  00000M 1:77:MX---  00000 0:0:-----   00A 0:0:-----
        0 0:0:-----        02A 1:77:BB-cd     5 1:77:EE-ef       1_2 1:77:AA-ab    12 1:77:LL-ij
        12- 1:77:LL-ij     99999 1:77:ZZ-uv   30000 0:103:YY-mn  30100 0:0:XX-op   96701 0:265:HI-qr
        99501 0:265:AK-st  006 0:265:PR-gh    K1A0B1 1:77:ON---  K9Z 1:77:ON---    H0H0H0 1:77:HI---
        L5 0:0:XX---       M55 0:103:YY---    J1A 0:0:-----      K0Z 0:0:-----     . 0:0:-----)"))
        EXPECT_EQ(StateOf(zip), state) << zip;
    EXPECT_TRUE(engine_.calls.empty());
    context_.ScTable[0][0] = 0;
    for (const char* zip : {"02134", "02134M", "K1A0B1", ""})
        EXPECT_EQ(StateOf(zip), "1:77:NY---") << zip;
    engine_.state = [](char*, const char*) { return 0; };
    EXPECT_EQ(StateOf("02134"), "0:77:-----");
    engine = Engine{};
    EXPECT_EQ(StateOf("02134"), "0:77:-----");
    context_.TariffSourceCode = 'N';
    EXPECT_EQ(StateOf("02134"), "1:77:MA-kl");
}

TEST_F(StateTest, LetterRangesIncludeTheirEnds) {
    for (const auto& [key, place] :
         Table<2>(R"(H00 0 H99 0 H9: -1 H0 -1 H15x 0 K1A 1 K9Z 1 K19 -1 K9[ -1
             L00 2 L99 2 L9: -1 L9A 3 M99 3 Z00 4 ~~~ 4 . -1)"))
        for (const int32_t count : {-1, 0, 1, 2, 3, 4, 5}) {
            context_.SccCount = count;
            const int32_t index = std::stoi(place) < count ? std::stoi(place) : -1;
            EXPECT_EQ(GetZipcIndex(&context_, Padded(key, 3).c_str()), index) << key << count;
        }
    EXPECT_EQ(GetZipcIndex(&context_, "\xFE\xFE\xFE"), 4);
    EXPECT_EQ(GetZipcIndex(&context_, "\xFE\xFE\xFF"), -1);
    free(context_.SccTable);
    context_.SccTable = nullptr;
    EXPECT_EQ(GetZipcIndex(&context_, "H00"), -1);
}

TEST_F(ValidateTest, ClassesAreThoseOfTheTariffOrOfTheProfilesMap) {
    for (const auto& [i, name, mapped] :
         Table<3>(R"(0 100 100  1 85 70  2 70 70.5  3 92.25 50  4 FAK 85
             5 85 85  6 123456 .  7 7 .  8 70.5 .  9 FAX .  19 50 .)")) {
        CopyText(context_.ClassTable[std::stoi(i)], name);
        CopyText(context_.Profile.ClassMap[std::stoi(i) % 18], mapped);
    }
    // ClassCount; f: FAK allowed, m: the map is on; result and code, then the line's index, text
    // and mark, which were -7, ????? and ??; - stands for an unknown class.
    for (const auto& [count, on, text, line] : Table<4>(R"(
        8 n 100 1:0:0:100     8 n 10 -             8 n 1000 -            8 n . -      8 f 85 1:0:1:85
        8 n 92.25 1:0:3:92.25  8 n 92.2 -          8 n 50 -              8 n 123456 1:0:6:12345
        8 n 1234567 -         8 n FAK 1:0:4:FAK    8 f FAK 1:0:-7:?????  8 f fak -    8 f FAKE -
        8 m 100 1:0:0:?????   8 m 85 1:0:2:?????*  8 m 70 -              9 m 70 1:0:8:?????*
        8 m 92.25 -           20 m 92.25 1:0:19:?????*  8 m FAK 1:0:1:?????*  8 fm FAK 1:0:-7:?????
        0 f FAK -             -1 f FAK -           21 n 50 1:0:19:50     2147483647 n 51 -
        21 m 50 1:0:19:50)")) {
        FillField(context_.LineClass[5], '?');
        FillField(context_.LineClassMark[5], '?');
        context_.LineClassIndex[5] = -7;
        context_.ClassCount = std::stoi(count);
        context_.Profile.ClassMapOn = Has(on, 'm') ? 256 : 0;
        const std::string told =
            Told(context_, VerClass(&context_, text.c_str(), 5, Has(on, 'f') ? 256 : 0));
        EXPECT_EQ(Joined(told, context_.LineClassIndex[5],
                         Printed(context_.LineClass[5]) + Printed(context_.LineClassMark[5])),
                  line == "-" ? "0:105:-7:?????" : line)
            << count << on << text;
    }
    context_.Profile.ClassMapOn = 0;
    CopyText(context_.ClassTable[0], Padded("FAK", 6));
    EXPECT_EQ(VerClass(&context_, "FAK", 5, 1), 1);
    EXPECT_EQ(+context_.LineClassIndex[5], 0);
}

TEST_F(ValidateTest, WeightsLieInABreakThatIsInUse) {
    for (const auto& [i, name, least, most] :
         Table<4>(R"(0 L5C 0 499  1 XXX5C 500 999  2 M1M 1000 1999
             3 XX2M 1999 5000  4 . -20 -10  5 xxx 10000 20000  6 XXX 1 1  19 L 777777 777777)")) {
        CopyText(context_.WeightBreakName[std::stoi(i)], name);
        context_.WeightBreakMin[std::stoi(i)] = std::stoi(least);
        context_.WeightBreakMax[std::stoi(i)] = std::stoi(most);
    }
    context_.WeightBreakCount = 1;
    // WeightBreakTotal, text, break.
    for (const auto& [total, text, index] : Table<3>(R"(6 0 0  6 499 0  6 500 -7  6 700 -7  6 1000 2
             6 1999 2  6 2000 3  6 __150_L 0  6 . 0  6 LB_700 0  6 12.9 0  6 -15 4  6 -5 -7  6 +1500 2
             6 0001500 2  6 0020000 5  6 5001 -7  6 1_500 0  6 0x5DC 0  20 6000 -7  20 777777 19
             19 777777 -7  21 777777 19  2147483647 777777 19  -1 100 -7)")) {
        const std::string seven = Padded(text, 7);
        const std::vector<char> weight(seven.begin(), seven.end());  // Unterminated.
        FillField(context_.LineWeight[5], '?');
        context_.LineWeightIndex[5] = -7;
        context_.WeightBreakTotal = std::stoi(total);
        const bool held = index != "-7";
        EXPECT_EQ(Told(context_, VerWeight(&context_, weight.data(), 5)), held ? "1:0" : "0:106");
        EXPECT_EQ(std::to_string(context_.LineWeightIndex[5]), index) << text;
        EXPECT_EQ(std::string(WholeField(context_.LineWeight[5])), held ? seven : "???????");
    }
    for (const auto& [index, in_use] :
         Table<2>("0 1 1 0 3 1 4 1 5 1 19 1 20 0 -1 0 2147483647 0 -2147483648 0"))
        EXPECT_EQ(ValidWeight(&context_, std::stoi(index)), std::stoi(in_use)) << index;
    const Untouched all{context_, {}};
    for (const int32_t line : {-1, 8, INT_MAX, INT_MIN}) {
        EXPECT_EQ(Told(context_, VerClass(&context_, "85", line, 0)), "0:105") << line;
        EXPECT_EQ(Told(context_, VerWeight(&context_, "100\0\0\0", line)), "0:106") << line;
    }
}

}  // namespace hundredweight
