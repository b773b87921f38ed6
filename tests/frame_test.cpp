// Texts, numbers and messages, which all other parts use.
#include <clocale>
#include <cmath>

#include "frame/error_text.h"
#include "frame/numbers.h"
#include "support/recorded_boxes.h"

namespace hundredweight {

TEST(Messages, BelongToTheirCodes) {
    uint32_t checksum = 2166136261;  // FNV-1a over every message and its terminator.
    for (int32_t code = -1; code <= 1000; ++code) {
        char text[kMessageSize] = "";
        GetErrorText(code, text);
        for (const char letter : Printed(text) + '\0')
            checksum = (checksum ^ static_cast<unsigned char>(letter)) * 16777619;
    }
    EXPECT_EQ(checksum, 1267765880U);
}

TEST(MessageBoxes, ShowTheTextOrElseTheMessageOfTheCode) {
    const std::string fits(179, 'x');
    for (const auto& [text, code, shown] :
         Table<3>(". 101 Invalid_Origin_ZIP_Code.  %s 9 %s  " + fits + "yz 1 " + fits)) {
        RecordedBoxes recorded;
        std::string told = "16:Fatal:" + shown + ";quit:" + code + ';';
        fatal(text.c_str(), "Fatal", std::stoi(code));
        for (const int32_t answer : {1, 7}) {
            int32_t* const owner = &(recorded.answer = answer);
            EXPECT_EQ(warning(text.c_str(), "Warning", std::stoi(code), owner), answer);
            EXPECT_EQ(question(text.c_str(), "Question", std::stoi(code), owner), answer != 7);
            told += "48:Warning:" + shown + " owned;36:Question:" + shown + " owned;";
        }
        EXPECT_EQ(recorded.told, told);
    }
}

void ExpectDecimalNumbers() {
    for (const auto& [text, numbers] : Table<2>(R"(
        . 0:0   _+12.5abc 12:12.5  -7.25 -7:-7.25  .5 0:0.5   5. 5:5      -.5 0:-0.5  ._ 0:0
        -_1 0:0  +-1 0:0  1,5 1:1  1e3 1:1000      1e 1:1     0x10 0:0    inf 0:0     nan 0:0
        2E-1x 2:0.2)"))
        EXPECT_EQ(Joined(ReadInteger(text), ReadDecimal(text)), numbers) << text;
    const std::pair<NumberText, const char*> texts[] = {
        {FormatDecimal(1234.5, 9, 2), "  1234.50"}, {FormatDecimal(0.125, 5, 2), " 0.12"},
        {FormatDecimal(12345, 5, 2), "12345.00"},   {FormatZeroPadded(-4.5, 7, 2), "-004.50"},
        {FormatInteger(-12, 5), "  -12"},           {FormatZeroPadded(-5, 6), "-00005"},
        {FormatNonZero(-42, 6), "   -42"},          {ZeroPadText("1234567", 6), "1234567"}};
    for (const auto& [printed, expected] : texts) EXPECT_STREQ(printed.c_str(), expected);
}

TEST(Numbers, AreDecimalTextWhateverTheHostsLocale) {
    ExpectDecimalNumbers();
    const char* locale = nullptr;
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German"})
        if (locale == nullptr) locale = std::setlocale(LC_ALL, name);
    if (locale == nullptr) GTEST_SKIP() << "no locale with a decimal comma here";
    ExpectDecimalNumbers();
    std::setlocale(LC_ALL, "C");
}

TEST(Numbers, EndAtTheirOwnCharactersAndBounds) {
    EXPECT_EQ(ReadInteger(std::string_view("123456", 3)), 123);
    EXPECT_EQ(ReadDecimal(std::string_view("12.345", 4)), 12.3);
    EXPECT_EQ(ReadInteger("99999999999"), INT32_MAX);
    EXPECT_EQ(ReadInteger("-99999999999999999999999"), INT32_MIN);
    for (const auto& [value, truncated] : {std::pair{-2.99, -2}, {3e9, INT32_MAX}, {NAN, 0}})
        EXPECT_EQ(TruncateToInteger(value), truncated);
}

TEST(Trimming, TakesWhiteSpaceOffOneEnd) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"AB \t\r\n\v\f", "AB", "AB \t\r\n\v\f"},
        {"   ", "", ""},
        {"", "", ""},
        {" A B ", " A B", "A B "},
        {"\xA0.\x85", "\xA0.\x85", "\xA0.\x85"}};
    for (const auto& [text, without_tail, without_head] : rows)
        for (const auto& [trim, trimmed] :
             {std::pair(&strtrim, without_tail), {&strltrim, without_head}}) {
            char buffer[20] = " ";  // A blank before the text, which must stay.
            EXPECT_EQ(trim(strcpy(buffer + 1, text)), buffer + 1);
            EXPECT_EQ(buffer, ' ' + std::string(trimmed));
        }
}

TEST(Rounding, RoundsUpFromFortyNineHundredths) {
    const std::tuple<float, int32_t, float> rows[] = {
        {2.345F, 2, 2.35F},    {12.5F, 0, 13},   {12.49F, 0, 12},  {12.491F, 0, 13},
        {10.4849F, 2, 10.49F}, {1249, -2, 1300}, {1248, -2, 1200}, {-1.235F, 2, -1.23F},
        {-0.005F, 2, 0},       {-2.5F, 0, -2},   {-2.52F, 0, -3},  {16777216, 0, 16777216}};
    for (const auto& [value, places, rounded] : rows)
        EXPECT_EQ(rndoff(value, places), rounded) << value;
}

TEST(FileNames, AreSplitOffPathsAndGivenExtensions) {
    const char* const buffer = SplitPath("");
    EXPECT_STREQ(buffer, "");
    const std::string full(254, 'd'), long_name(260, 'N');
    for (const auto& [path, name] :
         Table<2>(R"(FILE FILE  .EXT .EXT  DIR\FILE.EXT FILE.EXT
             C:DATA.ZP6 DATA.ZP6  /rates\old/A.B.C A.B.C  C:\RATES\README C:\RATES\README
             RATES.OLD\ RATES.OLD\  V1.2/README V1.2/README  DIR\.EXT DIR\.EXT )" +
                  full.substr(1) + "/A.BCD A.BCD " + full + "/A.BCD .")) {
        EXPECT_EQ(SplitPath(path.c_str()), buffer);
        EXPECT_EQ(buffer, name) << path;
    }
    for (const auto& [text, extension, result] :
         Table<3>(R"(PROFILE .FIL PROFILE.FIL  PROFILE.ZSA .FIL PROFILE.FIL  A.B.C .X A.X
             .ZSA .FIL .ZSA.FIL  . .FIL .FIL  C:\V1.2\PROFILE .FIL C:\V1.FIL  A.B .FILE A.FIL )" +
                  long_name + " .FIL " + long_name)) {
        char name[300];
        EXPECT_EQ(ForceFileNameExtension(strcpy(name, text.c_str()), extension.c_str()), name);
        EXPECT_EQ(name, result);
    }
}

}  // namespace hundredweight
