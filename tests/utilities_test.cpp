#include "support/table.h"

namespace hundredweight {

TEST(Trimming, TakesWhiteSpaceOffOneEnd) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"AB \t\r\n\v\f", "AB", "AB \t\r\n\v\f"},
        {"   ", "", ""},
        {"", "", ""},
        {" A B ", " A B", "A B "},
        {"\xA0.\x85", "\xA0.\x85", "\xA0.\x85"}};
    for (const auto& [text, without_tail, without_head] : rows) {
        char buffer[20] = " ";  // A blank before the text, which must stay.
        EXPECT_EQ(strtrim(strcpy(buffer + 1, text)), buffer + 1);
        EXPECT_EQ(buffer, ' ' + std::string(without_tail));
        EXPECT_EQ(strltrim(strcpy(buffer + 1, text)), buffer + 1);
        EXPECT_EQ(buffer, ' ' + std::string(without_head));
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
    const std::string longest = std::string(253, 'd') + "/A.BCD A.BCD " + std::string(254, 'd');
    for (const auto& [path, name] :
         Table<2>("FILE FILE  .EXT .EXT  DIR\\FILE.EXT FILE.EXT  C:DATA.ZP6 DATA.ZP6 "
                  "/rates\\old/A.B.C A.B.C  C:\\RATES\\README C:\\RATES\\README "
                  "RATES.OLD\\ RATES.OLD\\  V1.2/README V1.2/README  DIR\\.EXT DIR\\.EXT " +
                  longest + "/A.BCD .")) {
        EXPECT_EQ(SplitPath(path.c_str()), buffer);
        EXPECT_EQ(buffer, name) << path;
    }
    const std::string too_long(260, 'N');
    for (const auto& [text, extension, result] :
         Table<3>("PROFILE .FIL PROFILE.FIL  PROFILE.ZSA .FIL PROFILE.FIL  A.B.C .X A.X "
                  ".ZSA .FIL .ZSA.FIL  . .FIL .FIL  C:\\V1.2\\PROFILE .FIL C:\\V1.FIL "
                  "A.B .FILE A.FIL " +
                  too_long + " .FIL " + too_long)) {
        char name[300];
        EXPECT_EQ(ForceFileNameExtension(strcpy(name, text.c_str()), extension.c_str()), name);
        EXPECT_EQ(name, result);
    }
}

}  // namespace hundredweight
