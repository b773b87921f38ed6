#include <cstdlib>

#include "support/table.h"
#include "support/tariff_fixture.h"
#include "tariff/data_file.h"
#include "tariff/labels.h"

namespace hundredweight {
namespace fs = std::filesystem;

struct SetRecordsTest : TariffTest {
    SetRecordsTest() {
        PutText(context_.UserDir, (directory_ / "user/").string());
        for (const char* name : {"user", "current"}) fs::create_directory(directory_ / name);
        fs::current_path(directory_ / "current");
        for (int i = 0; i < 540; ++i) pattern_ += static_cast<char>('0' + i % 75);
    }
    ~SetRecordsTest() override { fs::current_path(before_); }

    std::string Content(const std::string& name) const {
        return fs::is_regular_file(directory_ / name) ? FileContent(directory_ / name) : "no file";
    }
    void Remove(const std::vector<std::string>& names) const {
        for (const std::string& name : names) fs::remove_all(directory_ / name);
    }

    const fs::path before_ = fs::current_path();
    std::string pattern_;
    int32_t found_ = 0;
};

TEST_F(SetRecordsTest, TheVersionIsMadeOfTheDigitsOfBytes4To8) {
    for (const auto& [text, version] :
         {std::pair("V 022", 22), {"ABCDE", 0}, {"98765", 98765}, {"-1.5\xB2", 15}}) {
        WriteFile("ABC.SET", Padded("9999" + std::string(text) + "9999", 300));
        EXPECT_EQ(Told(context_, OpenAllFiles(&context_, &found_)), "0:460") << "no SCC";
        EXPECT_EQ(+context_.SetVersion, version) << text;
    }
}

TEST_F(SetRecordsTest, MexicoNeedsMefOfTheUserOrTheDataDirectoryAndMet) {
    WriteFile("ABC.SET", pattern_);
    // Sizes of the user's MEF, of the set's, and of MET; what is read of them, and the flag.
    for (const auto& [user_mef, data_mef, met, read, loaded] : Table<5>(R"(
        350 350 283 um 1  0 351 300 dm 1  350 0 283 um 1  349 350 283 um 0  350 350 282 um 0
        0 0 283 -m 0)")) {
        Remove({"user/ABC.MEF", "ABC.MEF"});
        if (user_mef != "0") WriteFile("user/ABC.MEF", std::string(std::stoul(user_mef), 'u'));
        if (data_mef != "0") WriteFile("ABC.MEF", std::string(std::stoul(data_mef), 'd'));
        WriteFile("ABC.MET", std::string(std::stoul(met), 'm'));
        context_.MefRecord[348] = context_.MetRecord[281] = '-';
        OpenAllFiles(&context_, &found_);
        EXPECT_EQ((std::string{context_.MefRecord[348], context_.MetRecord[281]}), read);
        EXPECT_EQ(std::to_string(context_.MexicoFilesLoaded), loaded);
    }
}

TEST_F(SetRecordsTest, DefaultsOfTheEarlierLayoutAreUpgradedInMemory) {
    std::string current = pattern_.substr(0, 348), earlier = current;
    Put(current, 260, {"\0\1", 2});
    Put(earlier, 260, {"\0\0", 2});
    std::string upgraded = earlier;
    Put(upgraded, 256, earlier.substr(41, 4) + '\1' + '\0' + '6');
    for (const auto& [on_disk, read] : {std::pair(earlier, upgraded), {current, current}}) {
        WriteFile("ABC.DEF", on_disk + "more");
        EXPECT_EQ(Told(context_, ReadDefFile(&context_)), "1:0");
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(DefRecord)), read);
        EXPECT_EQ(Content("ABC.DEF"), on_disk + "more");
    }
    WriteFile("user/ABC.DEF", upgraded);
    EXPECT_EQ(ReadDefFile(&context_), 1);
    EXPECT_EQ(BytesOf(context_, HWT_FIELD(DefRecord)), upgraded) << "the user's come first";
    WriteFile("user/ABC.DEF", earlier.substr(0, 347));
    EXPECT_EQ(Told(context_, ReadDefFile(&context_)), "0:244");
    EXPECT_EQ(+context_.DefLayoutMark, 0);
    Remove({"user/ABC.DEF", "ABC.DEF"});
    EXPECT_EQ(Told(context_, ReadDefFile(&context_)), "0:240");
}

TEST_F(SetRecordsTest, LabelsComeFromBsvAndThenFromZps) {
    const Span labels = {offsetof(RateContext, TariffLabel1), 4 * 15};
    WriteFile("ABC.BSV", Padded("?one          *?two           ?********* 14**?14 characters", 75));
    context_.BsvHandle = OpenDataFile(context_, ".BSV").Release();
    Fill(context_, labels, '#');
    EXPECT_EQ(ReadBsvFile(context_), 1);
    EXPECT_EQ(BytesOf(context_, labels),
              Padded("one           ", 15) + Padded("two           ", 15) +
                  Padded("********* 14* ", 15) + Padded("14 characters", 15));
    EXPECT_EQ(BytesOf(context_, HWT_FIELD(BsvRecord)).substr(40, 6), " 14* ?");
    for (const auto& [zps, label1, label2] :
         {std::tuple("?123456789?PARTNERxx?", "123456789", "PARTNERSHIP"),
          {"?PARTNER  ?PARTNE ab?", "PARTNERSHIP", "PARTNE ab"}}) {
        WriteFile("ABC.ZPS", Padded(zps, 628, '?'));
        context_.ZpsHandle = OpenDataFile(context_, ".ZPS").Release();
        context_.ZpsRecord = static_cast<unsigned char*>(calloc(628, 1));
        EXPECT_EQ(ReadZpsFile(context_), 1);
        EXPECT_EQ(BytesOf(context_, labels), Padded(label1, 15) + Padded(label2, 45));
        CloseAllFiles(&context_);
    }
}

TEST_F(SetRecordsTest, UpTo25TableNamesHave15CharactersEach) {
    EXPECT_EQ(Told(context_, ReadTblFile(context_)), "0:450");
    pattern_[20] = '\0';
    for (const std::size_t size : {540U, 40U, 17U, 0U}) {
        WriteFile("ABC.TBL", pattern_.substr(0, size));
        Fill(context_, HWT_FIELD(TableNames), '#');
        std::string names;
        for (std::size_t i = 0; i < std::min<std::size_t>(size / 18, 25); ++i)
            names += Padded(pattern_.substr(18 * i, i == 1 ? 2 : 15), 16);
        EXPECT_EQ(ReadTblFile(context_), 1);
        EXPECT_EQ(BytesOf(context_, HWT_FIELD(TableNames)), Padded(names, 400, '#'));
    }
}

TEST_F(SetRecordsTest, DefaultsAreWrittenWithTheMexicanOnesWhenTheyAreLoaded) {
    WriteFile("current/ABC.DEF", std::string(500, 'o'));
    EXPECT_EQ(WriteDefFile(&context_), 1);
    EXPECT_EQ(Content("current/ABC.DEF"), std::string(348, '\0'));
    EXPECT_EQ(Content("user/ABC.MEF"), "no file");
    context_.MexicoFilesLoaded = 1;
    EXPECT_EQ(WriteDefFile(&context_), 1);
    EXPECT_EQ(Content("user/ABC.MEF"), std::string(350, '\0'));
    fs::remove_all(directory_ / "user");
    context_.DefRecord[0] = 'n';
    EXPECT_EQ(Told(context_, WriteDefFile(&context_)), "0:160");
    EXPECT_EQ(Content("current/ABC.DEF").front(), 'n');
    EXPECT_EQ(WriteAccFile(&context_), 1);
    EXPECT_EQ(Content("current/ABC.ACC"), "") << "no items";
    context_.AccCount = 2;
    FillField(context_.AccRecords[1], 'i');
    EXPECT_EQ(WriteAccFile(&context_), 1);
    EXPECT_EQ(Content("current/ABC.ACC"), std::string(123, '\0') + std::string(123, 'i'));
    PutText(context_.FileBase, "NINECHARS");
    EXPECT_EQ(Told(context_, WriteAccFile(&context_)), "0:520");
}

}  // namespace hundredweight
