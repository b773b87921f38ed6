#include "support/table.h"

namespace hundredweight {
namespace fs = std::filesystem;

/// Every field that a conversion moves: where it comes to stand, where it stood, its size.
const auto kMoves = Table<3>(R"(4 0 25  29 25 1  30 26 175  205 201 6  212 207 260  472 467 20
    492 487 4  496 491 1  497 492 1  498 493 474  972 967 1  973 968 260  1233 1228 2  1235 1230 176
    1422 1417 1  1423 1418 9)");

/// A record of the older layout whose bytes tell where they stand, and what becomes of it.
std::string Old(std::string_view name, int seed = 1) {
    std::string record(1792, '\0');
    for (char& byte : record) byte = static_cast<char>(seed = seed * 5 % 251);
    return record.replace(0, 25, Padded(name, 25));
}
std::string New(std::string_view name, int seed = 1) {
    std::string record = Padded("\1", 1797);
    for (const auto& [to, from, size] : kMoves)
        Put(record, std::stoul(to), Old(name, seed).substr(std::stoul(from), std::stoul(size)));
    return record;
}
std::string Many(const std::string& record, int count) {
    std::string records;
    while (count-- > 0) records += record;
    return records;
}

struct OptionRecordsTest : TariffTest {
    std::string Content(const std::string& name) const { return FileContent(directory_ / name); }
    int32_t Find(const std::string& name, const std::string& file = "OPTIONS.FIL") {
        return ReadFendroOpt((directory_ / file).string().c_str(), &found_, name.c_str());
    }
    OptionRecord found_;
};

TEST_F(OptionRecordsTest, OldRecordsAreMovedFieldByField) {
    const std::string before = Old("FIRST", 2) + Old("SECOND  ") + Old("THIRD", 3);
    WriteFile("OPTIONS.FIL", before);
    WriteFile("TEMPPRS.FIL", std::string(9999, 't'));
    WriteFile("SAVEPRS.FIL", "an earlier backup");
    EXPECT_EQ(Find("SECOND"), 1);
    EXPECT_EQ(Content("OPTIONS.FIL"), New("FIRST", 2) + New("SECOND  ") + New("THIRD", 3));
    EXPECT_EQ(Content("SAVEPRS.FIL"), before);
    EXPECT_FALSE(fs::exists(directory_ / "TEMPPRS.FIL"));
    EXPECT_STREQ(found_.OptName, "SECOND");
    CopyText(found_.OptName, Padded("SECOND  ", 25));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(&found_), 1797), New("SECOND  "));
}

TEST_F(OptionRecordsTest, SizeAndMarkersTellTheLayout) {
    const std::string old = Old("ONE"), current = New("ONE");
    std::string unmarked = Many(current, 1792);
    unmarked[1791 * 1797] = 2;
    const std::tuple<std::string, int32_t, bool> rows[] = {{"", 0, true},
                                                           {"x", 0, false},
                                                           {current, 1, false},
                                                           {current + "tail", 1, false},
                                                           {old.substr(1), 0, false},
                                                           {old + '1', 0, false},
                                                           {old + old, 1, true},
                                                           {Many(current, 1792), 1, false},
                                                           {Many(old, 1797), 1, true},
                                                           {unmarked, 1, true}};
    for (const auto& [before, result, converted] : rows) {
        fs::remove(directory_ / "SAVEPRS.FIL");
        WriteFile("OPTIONS.FIL", before);
        EXPECT_EQ(Find("ONE"), result) << before.size();
        EXPECT_EQ(Content("OPTIONS.FIL").size(),
                  converted ? before.size() / 1792 * 1797 : before.size());
        EXPECT_EQ(Content("OPTIONS.FIL") == before, !converted || before.empty());
        EXPECT_EQ(fs::exists(directory_ / "SAVEPRS.FIL"), converted);
        EXPECT_TRUE(!converted || Content("SAVEPRS.FIL") == before);
    }
}

TEST_F(OptionRecordsTest, NamesAreComparedWithoutTrailingWhiteSpace) {
    const std::string full(25, 'N');
    WriteFile("OPTIONS.FIL", New("ALPHA2") + New("ALPHA \t\r\n") + New("ALPHA", 2) + New(full) +
                                 New(" BETA") + New("    ") + New("PART").substr(0, 1796));
    for (const auto& [name, result] :
         Table<2>("ALPHA 1 ALPH 0 ALPHA2 1 ALPHA_ 0 alpha 0 _BETA 1 BETA 0 . 1 PART 0 " + full +
                  " 1 N" + full + " 0 " + full.substr(1) + " 0")) {
        EXPECT_EQ(Find(name), std::stoi(result)) << name;
        EXPECT_TRUE(result == "0" || Printed(found_.OptName) == name);
        EXPECT_TRUE(result == "0" || found_.OptionByte29 == New("")[29]) << "the first of two";
    }
}

TEST_F(OptionRecordsTest, SomeFilesAreRefused) {
    EXPECT_EQ(Find("ONE"), 0);
    EXPECT_TRUE(fs::is_empty(directory_));
    WriteFile("OPTIONS.FIL", Old("ONE"));
    for (const std::size_t length : {260U, 259U}) {
        const std::string path = Padded(directory_.string(), length - 11, '/') + "OPTIONS.FIL";
        EXPECT_EQ(ReadFendroOpt(path.c_str(), &found_, "ONE"), length == 259);
    }
    for (const char* name : {"OPTIONS.FIL", "SAVEPRS.FIL"}) fs::remove(directory_ / name);
    for (const auto& [on_disk, asked] :
         Table<2>("TEMPPRS.FIL TEMPPRS.FIL  SAVEPRS.FIL SAVEPRS.FIL  TEMPPRS.FIL tempprs.fil  "
                  "saveprs.fil SAVEPRS.FIL")) {
        WriteFile(on_disk, Old("ONE"));
        EXPECT_EQ(Find("ONE", asked), 0);
        EXPECT_EQ(Content(on_disk), Old("ONE"));
        fs::remove(directory_ / on_disk);
        EXPECT_TRUE(fs::is_empty(directory_)) << on_disk;
        WriteFile(on_disk, New("ONE"));
        EXPECT_EQ(Find("ONE", asked), 1);
        fs::remove(directory_ / on_disk);
    }
    WriteFile("options.fil", Old("ONE"));  // Found whatever its case, twice.
    EXPECT_EQ(Find("ONE") + Find("ONE"), 2);
    EXPECT_EQ(Content("SAVEPRS.FIL"), Old("ONE"));
}

}  // namespace hundredweight
