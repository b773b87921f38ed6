#include "tariff/data_file.h"

#include <unistd.h>

#include "support/table.h"

namespace hundredweight {

namespace fs = std::filesystem;

struct DataFileTest : TariffTest {
    /// What the file of an extension holds; "-" when it is not opened.
    std::string Content(const char* extension) const {
        const OpenFile file = OpenDataFile(context_, extension);
        if (!file) return "-";
        char content[16];
        const std::size_t size = platform::ReadBytes(file.handle(), content, sizeof content);
        return {content, file.handle() > 0 ? size : 0};
    }
};

TEST_F(DataFileTest, NamesAreDirectoryBaseAndExtension) {
    for (const auto& [on_disk, base, extension, opens] : Table<4>(
             "ABC.ZP6 ABC .ZP6 1  ABC.ZP7 ABC .ZP6 0  ABC.LA ABC .LA_ 1 "
             "abc.Zp6 ABC .ZP6 1  EIGHTCHR.SC EIGHTCHR .SC_ 1  NINECHARS.SC NINECHARS .SC_ 0")) {
        WriteFile(on_disk, "content");
        PutText(context_.FileBase, base);
        EXPECT_EQ(Content(extension.c_str()), opens == "1" ? "content" : "-") << on_disk;
        fs::remove(directory_ / on_disk);
    }
    PutText(context_.FileBase, "ABC");
    fs::create_directory(directory_ / "ABC.COZ");  // A directory is no data file.
    EXPECT_EQ(With(ReadCOZFile(&context_)), Outcome(0, 0));
    EXPECT_EQ(With(OpenLevelFile(&context_, "ABC.COZ")), Outcome(0, 300));
    WriteFile("ABC.ZP6", "other");
    const int input = dup(0);
    close(0);
    EXPECT_EQ(Content(".ZP6"), "other");  // Its handle is not the 0 that is free now.
    dup2(input, 0);
    close(input);
}

TEST_F(DataFileTest, APathHas259CharactersAtMost) {
    WriteFile("ABC.COZ", "content");
    for (const bool fits : {true, false}) {
        std::string directory = directory_.string() + (directory_.string().size() % 2 ? "/" : "//");
        while (directory.size() < 252) directory += "./";
        PutText(context_.DataDir, directory + (fits ? "" : "/"));
        EXPECT_EQ(ReadCOZFile(&context_), fits);
        EXPECT_EQ(Told(context_, OpenLevelFile(&context_, "ABC.COZ")), fits ? "1:0" : "0:300");
    }
}

TEST_F(DataFileTest, OnlyTheDiscountFileIsLookedForInTheCurrentDirectoryFirst) {
    const fs::path before = fs::current_path();
    fs::create_directory(directory_ / "current");
    fs::current_path(directory_ / "current");
    for (const std::string name : {"ABC.DIS", "ABC.ZP6"}) {
        WriteFile(name, "data");
        WriteFile("current/" + name, "current");
    }
    EXPECT_EQ(Content(".DIS") + Content(".ZP6"), "currentdata");
    fs::remove("ABC.DIS");
    EXPECT_EQ(Content(".DIS"), "data");
    fs::current_path(before);
}

TEST_F(DataFileTest, TheLevelFileAndTheCozFileAreReadWhole) {
    const std::string record = "123456782024013190";
    const std::tuple<std::string, int32_t, const char*> rows[] = {
        {Padded(record, 40, 'x'), 2, "01-31-2024"},
        {record.substr(0, 16), 0, "01-31-2024"},
        {record.substr(0, 15), 0, "##########"},
        {"", 0, "##########"}};
    for (const auto& [content, count, date] : rows) {
        WriteFile("ABC.COZ", content);
        FillField(context_.LevelFileDate, '#');
        ASSERT_EQ(With(OpenLevelFile(&context_, "ABC.COZ")), Outcome(1, 0));
        ASSERT_EQ(With(ReadCOZFile(&context_)), Outcome(1, 0));
        EXPECT_EQ(+context_.LevelCount, count);
        EXPECT_EQ(+context_.CozCount, content.size() / 6);
        EXPECT_EQ(WholeField(context_.LevelFileDate), date);
        ASSERT_TRUE(context_.LevelTable && context_.CozTable);
        EXPECT_EQ(memcmp(context_.LevelTable, content.data(), content.size()), 0);
        EXPECT_EQ(memcmp(context_.CozTable, content.data(), content.size()), 0);
    }
    fs::remove(directory_ / "ABC.COZ");  // A tariff set may do without.
    context_.ErrorCode = 77;
    EXPECT_EQ(With(ReadCOZFile(&context_)), Outcome(0, 77));
    EXPECT_EQ(+context_.CozCount, 0);
}

TEST_F(DataFileTest, NoNameLeadsOutOfItsDirectory) {
    for (const char* name : {"current", "here"}) fs::create_directory(directory_ / name);
    const fs::path before = fs::current_path();
    fs::current_path(directory_ / "current");
    PutText(context_.DataDir, (directory_ / "here/").string());
    CopyText(context_.UserDir, context_.DataDir);
    context_.Profile.DiscModeZ = context_.DiscountOn = 1;
    const bool any_name = fs::path::preferred_separator == '/';
    for (const std::string name : {"../EVIL", "..\\EVIL", "C:EVIL", "EV\tIL", "EV\x7FIL"}) {
        for (const char* directory : {"here/", "current/"})
            for (const char* extension : {".ZP6", ".DIS", ".COZ"})
                if (any_name || name[0] == '.') WriteFile(directory + name + extension, "content");
        const auto there = std::distance(fs::recursive_directory_iterator(directory_), {});
        PutText(context_.FileBase, name);
        CopyText(context_.Profile.ProfileName, Padded(name, 31));
        EXPECT_EQ(Content(".ZP6") + Content(".DIS"), "--") << name;
        EXPECT_EQ(Told(context_, ReadCOZFile(&context_)), "0:0");
        EXPECT_EQ(Told(context_, OpenLevelFile(&context_, (name + ".COZ").c_str())), "0:300");
        EXPECT_EQ(Told(context_, WriteDefFile(&context_)), "0:241");
        EXPECT_EQ(Told(context_, WriteMexicoDefFile(&context_)), "0:160");
        EXPECT_EQ(Told(context_, WriteAccFile(&context_)), "0:520");
        PutText(context_.FileBase, "ABC");
        WriteFile("here/ABC.ZP6", "");
        EXPECT_EQ(Told(context_, LoadProfileZP6(&context_)), "1:436");
        fs::remove(directory_ / "here/ABC.ZP6");
        EXPECT_EQ(std::distance(fs::recursive_directory_iterator(directory_), {}), there);
    }
    fs::current_path(before);
}

}  // namespace hundredweight
