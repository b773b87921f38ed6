#include <climits>

#include "support/failing_disk.h"
#include "support/failing_system.h"
#include "support/table.h"

namespace hundredweight {
namespace fs = std::filesystem;

/// What a profile saves of the DEF record: where it stands in the profile, in DEF, and its size.
constexpr std::size_t kSaved[][3] = {{107, 12, 2},  {109, 41, 4},  {113, 256, 4}, {117, 179, 2},
                                     {119, 172, 5}, {124, 181, 5}, {129, 159, 2}, {131, 150, 7},
                                     {138, 170, 2}, {140, 161, 7}, {147, 31, 1}};

template <class Number>
std::string Bytes(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

/// A profile with ZIP-range discounts, each of which tells its place at its end.
std::string RecordOf(std::string_view name, const std::string& zips = "", int32_t count = 0) {
    std::string bytes = Padded(name, 17897), zip;
    std::istringstream entries(zips);
    for (std::size_t at = 243; std::getline(entries, zip, ','); at += 117)
        Put(bytes, at, Padded(zip, 110, 'z') + std::to_string(at));
    Put(bytes, 17793, Bytes(count));
    return bytes;
}

struct ProfilesTest : TariffTest {
    ProfilesTest() {
        fs::create_directory(directory_ / "user");
        PutText(context_.UserDir, (directory_ / "user/").string());
        for (std::size_t i = 0; i < 348; ++i)
            context_.DefRecord[i] = static_cast<char>(i % 100 + 1);
    }
    std::string Content() const { return FileContent(directory_ / "user/PROFILE.FIL"); }
    std::string Current() const { return BytesOf(context_, HWT_FIELD(Profile)); }
    std::string Prepare() { return Told(context_, ReadProfileFile(&context_)); }
    void WriteProfiles(const std::string& bytes) const { WriteFile("user/PROFILE.FIL", bytes); }
};

TEST_F(ProfilesTest, AUserWithoutProfilesGetsADefaultOne) {
    const std::string def(context_.DefRecord, 348);
    for (std::size_t i = 0; i < 20; ++i)
        PutText(context_.ClassTable[i], std::to_string(i + 99) + "!!");
    for (const auto& [where, classes] : Table<2>(R"(
        user/ 99!!,100!,101!,102!,103!,104!,105!,106!,107!,108!,109!,110!,111!,112!,113!,114!,115!,116!
        . 500,400,300,250,200,175,150,125,110,100,92,85,77,70,65,60,55,50)")) {
        std::string expected = Padded("Default", 17897), name;
        std::istringstream names(classes);
        for (std::size_t at = 35; std::getline(names, name, ','); at += 4) Put(expected, at, name);
        for (const auto& [at, from, size] : kSaved) Put(expected, at, def.substr(from, size));
        CopyText(context_.DefRecord, def);
        Fill(context_, HWT_FIELD(Profile), '#');
        context_.ProfilesInDataDir = where.empty() ? 'Y' : 'N';
        context_.UseEngine = where.empty() ? 256 : 0;
        const auto before = std::make_unique<RateContext>(context_);
        before->ProfileIndex = 0;
        before->ProfileFileCurrent = 'Y';
        EXPECT_EQ(Prepare(), "1:0");
        EXPECT_TRUE(Current() == expected);
        EXPECT_TRUE(FileContent(directory_ / (where + "PROFILE.FIL")) == expected);
        ExpectAlikeOutside({HWT_FIELD(Profile)}, *before, context_);
    }
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(directory_), {}), 3);
}

TEST_F(ProfilesTest, ATemplateIsCopiedForAUserWithoutProfiles) {
    const std::string content = RecordOf("ONE", "_____ 10000", 2) + "tail";
    WriteFile("PROFILE.FIL", content);
    const auto before = std::make_unique<RateContext>(context_);
    EXPECT_EQ(Prepare(), "1:0");
    EXPECT_TRUE(Content() == content && FileContent(directory_ / "PROFILE.FIL") == content);
    ExpectAlikeOutside({}, *before, context_);
    WriteProfiles(RecordOf("OWN"));
    EXPECT_EQ(Prepare(), "1:0");
    EXPECT_TRUE(Content() == RecordOf("OWN"));
}

TEST_F(ProfilesTest, ConversionMovesLeadingStateRecordsBehindTheOthersOnce) {
    std::string full = "     ,     ", order_of_full = "2";
    for (int i = 3; i < 152; ++i) order_of_full += ',' + std::to_string(i % 150);
    for (int i = 2; i < 150; ++i) full += ",10000";
    // ZipLength, count, entries and their order afterwards.
    for (const auto& [length, count, zips, order] : Table<4>(R"(
        5 5 _____,_____,10000,_____,20000,_____ 2,3,4,0,1,5  3 3 ___10,10000,___ 1,2,0
        5 3 ___10,10000,_____ 0,1,2   6 2 _____,____1 1,0    5 2 _____,_____,10000 0,1,2
        5 3 10000,_____,20000 0,1,2   5 1 _____,10000 0,1    5 0 _____,10000 0,1
        5 -1 _____,10000 0,1  5 150 FULL .  5 151 FULL .     5 2147483647 FULL .)")) {
        SCOPED_TRACE(length + ' ' + count + ' ' + zips);
        const std::string profile = RecordOf("ONE", order.empty() ? full : zips, std::stoi(count));
        std::string converted = profile, from;
        std::istringstream places(order.empty() ? order_of_full : order);
        for (std::size_t at = 243; std::getline(places, from, ','); at += 117)
            Put(converted, at, profile.substr(243 + 117 * std::stoul(from), 117));
        WriteProfiles(RecordOf("TWO") + profile + profile.substr(1));
        context_.ZipLength[0] = length[0];
        context_.ProfileFileCurrent = 'N';
        EXPECT_EQ(Prepare(), "1:0");
        EXPECT_TRUE(Content() == RecordOf("TWO") + converted);
        EXPECT_EQ(FileContent(directory_ / "user/PROFILE.ZSA"), "ZSA");
        EXPECT_EQ(+context_.ProfileFileCurrent, 'Y');
        WriteProfiles(profile);  // Both the marker and the flag tell that it is converted.
        context_.ProfileFileCurrent = 'N';
        EXPECT_EQ(Prepare(), "1:0");
        fs::remove(directory_ / "user/PROFILE.ZSA");
        context_.ProfileFileCurrent = 'Y';
        EXPECT_EQ(Prepare(), "1:0");
        EXPECT_TRUE(Content() == profile);
        EXPECT_EQ(std::distance(fs::recursive_directory_iterator(directory_), {}), 2);
    }
    for (const std::size_t size : {0U, 17896U}) {
        context_.ProfileFileCurrent = 'N';
        WriteProfiles(std::string(size, ' '));
        EXPECT_EQ(Prepare(), "1:0");
        EXPECT_EQ(Told(context_, GetProfileSize(&context_)), "0:0");
        fs::remove(directory_ / "user/PROFILE.ZSA");
    }
}

TEST_F(ProfilesTest, ProfilesAreCountedAndFoundByAll31BytesOfTheirName) {
    char key[31];
    const auto find = [&](std::string_view name) {
        CopyText(context_.Profile.ProfileName, Padded(name, 31));
        return Told(context_, GetProfileRecord(&context_));
    };
    EXPECT_EQ(Told(context_, GetProfileSize(&context_)) +
                  Told(context_, GetProfileKey(&context_, 0, key)) + find("ONE"),
              "0:1250:1250:125");
    const std::string names[] = {Padded("ONE", 30) + "x", "TWO", "ONE", "ONE",
                                 std::string(31, '\xFF')};
    std::string records;
    for (int number = 0; const std::string& name : names)
        records += RecordOf(name, std::to_string(number++));
    WriteProfiles(records + RecordOf("PART").substr(0, 17896));
    EXPECT_EQ(Told(context_, GetProfileSize(&context_)), "5:0");
    for (const int32_t number : {2, 1, 0, 4}) {
        const FailingDisk disk;
        const auto before = std::make_unique<RateContext>(context_);
        EXPECT_EQ(find(names[number]), "1:0");
        EXPECT_TRUE(Current() == RecordOf(names[number], std::to_string(number)) &&
                    context_.ProfileIndex == number);
        EXPECT_LE(disk.bytes_read, static_cast<std::size_t>(31 * (number + 1) + 17897));
        ExpectAlikeOutside({HWT_FIELD(Profile), HWT_FIELD(ProfileIndex)}, *before, context_);
        EXPECT_EQ(Told(context_, GetProfileKey(&context_, number, key)), "1:0");
        EXPECT_EQ(std::string(WholeField(key)), Padded(names[number], 31));
    }
    for (const char* name : {"PART", "THREE", "one", ""}) {
        const FailingDisk disk;
        EXPECT_EQ(find(name), "0:127");
        EXPECT_EQ(disk.bytes_read, 31U * 5U);
        EXPECT_TRUE(Current().substr(31) == RecordOf("", "4").substr(31) &&
                    context_.ProfileIndex == 4);
    }
    for (const int32_t number : {5, 6, -1, INT_MAX, INT_MIN, INT_MAX / 17897 + 1})
        EXPECT_EQ(Told(context_, GetProfileKey(&context_, number, key)), "0:126") << number;
    const BrokenFile broken;
    EXPECT_EQ(Told(context_, GetProfileKey(&context_, 0, key)) + find("ONE"), "0:1260:126");
}

TEST_F(ProfilesTest, SettingsGoIntoTheDefaultsAndTheDiscountFile) {
    std::string profile = Padded("", 17897, 'p'), def(context_.DefRecord, 348), disc(605, 'd');
    Put(profile, 149,
        Bytes<int16_t>(0x101) + Bytes<int16_t>(0x202) + Bytes<int16_t>(-3));  // P, C and Z.
    for (const auto& [at, to, size] : kSaved) Put(def, to, profile.substr(at, size));
    for (const std::size_t to : {6U, 8U, 252U}) Put(def, to, Bytes<int16_t>(0x101));
    Put(def, 254, Bytes<int16_t>(-3));
    Put(def, 16, Bytes<int16_t>(1));
    def[33] = 'M';
    Put(disc, 0, Bytes<int16_t>(2));
    Put(disc, 337, Padded("", 4 * 67));
    // Values and their texts. One too wide for its slot may take the slot's last byte, but no more.
    for (std::size_t i = 0; const auto& [value, text] : Table<2>(R"(12.5 12.50  5 _5.00  0 _0.00
             99.99 99.99  -1.5 -1.50  100 100.0  123456.7 12345  1e30 10000  1 _1.00  2.345 _2.35
             100 100.00  1 _1.00  2 _2.00  3 _3.00  4 _4.00  5 _5.00  6 _6.00  7 _7.00  8 _8.00
             9 _9.00  10 10.00  1234567 123456)")) {
        Put(profile, 155 + 4 * i, Bytes(std::stof(value)));
        Put(disc, 337 + 67 * (i / 11) + 6 * (i % 11), text);
        ++i;
    }
    memcpy(&context_.Profile, profile.data(), profile.size());
    FillField(context_.DiscRecord, 'd');
    const auto before = std::make_unique<RateContext>(context_);
    LoadProfileSettings(&context_);
    EXPECT_EQ(std::string(context_.DefRecord, 348), def);
    for (const int last : {35, 41, 47, 133}) context_.DiscRecord[337 + last] = '\0';
    EXPECT_EQ(std::string(context_.DiscRecord, 605), disc);
    ExpectAlikeOutside({HWT_FIELD(DefRecord), HWT_FIELD(DiscRecord), HWT_FIELD(ProfileTurnedOff)},
                       *before, context_);
}

TEST_F(ProfilesTest, SwitchesOfAProfileTakeEffect) {
    // Saved and alternative surcharge, the one taken with its percentages; at first it was 9.
    for (const auto& [saved, alternative, taken] :
         Table<3>("0 0 9_9_9  0 3 3_3_4  256 0 256_1_2  -1 3 -1_1_2")) {
        context_.SurchargeOn = 9;
        context_.DefFactorLow = context_.DefFactorHigh = 9;
        ProfileRecord& profile = context_.Profile;
        profile.SavedSurchargeOn = static_cast<int16_t>(std::stoi(saved));
        profile.AltSurchargeOn = static_cast<int16_t>(std::stoi(alternative));
        profile.SavedFactorLow = 1;
        profile.SavedFactorHigh = 2;
        profile.AltFactorLow = 3;
        profile.AltFactorHigh = 4;
        LoadProfileSettings(&context_);
        std::ostringstream now;
        now << +context_.SurchargeOn << ' ' << +context_.DefFactorLow << ' '
            << +context_.DefFactorHigh;
        EXPECT_EQ(now.str(), taken);
    }
    // Modes on and DiscountOn before; DiscountOn, ProfileTurnedOff, the C flag and DIS afterwards.
    for (const auto& [modes, on, told] :
         Table<3>(R"(P 0 1:0:N:7  . 1 0:1:N:7  . 0 0:0:N:7  C 5 1:0:M:2
             Z 0 1:0:N:7  PCZ -1 1:0:M:2  . 256 0:1:N:7)")) {
        context_.Profile.DiscModeP = Has(modes, 'P') ? 256 : 0;
        context_.Profile.DiscModeC = Has(modes, 'C') ? 256 : 0;
        context_.Profile.DiscModeZ = Has(modes, 'Z') ? 256 : 0;
        context_.DiscountOn = static_cast<int16_t>(std::stoi(on));
        context_.ProfileTurnedOff = context_.DisMethod = 7;
        LoadProfileSettings(&context_);
        std::ostringstream now;
        now << +context_.DiscountOn << ':' << +context_.ProfileTurnedOff << ':'
            << context_.DefModeCFlag << ':' << +context_.DisMethod;
        EXPECT_EQ(now.str(), told) << modes;
    }
}

TEST_F(ProfilesTest, AProfileMayHaveAZipTableOfItsOwn) {
    const std::string own(25, 'o'), tariff(36, 't'), wide(31, 'U');
    for (const std::string& name : {std::string("NARROW"), wide}) WriteFile(name + ".ZP6", own);
    // Profile, DiscModeZ, DiscountOn, what fails; what is told, and whose table was loaded.
    for (const auto& [name, mode, on, fails, told, table] : Table<6>(R"(
        NARROW 256 -1 - 1:0 own         NARROW 0 1 - 1:0 tariff
        NARROW 1 0 - 1:0 tariff     NONE 1 1 - 1:436 tariff       . 1 1 - 1:436 tariff
        NARROW 1 1 memory 1:168 tariff  NARROW 1 1 read 1:438 tariff  NARROW 1 1 reads 0:438 -
        NARROW 0 1 tariff 0:436 -   NONE 1 1 tariff 0:436 -
        UUUUUUUUUUUUUUUUUUUUUUUUUUUUUUU 1 1 - 1:0 own)")) {
        WriteFile("ABC.ZP6", tariff);
        if (fails == "tariff") fs::remove(directory_ / "ABC.ZP6");
        CopyText(context_.Profile.ProfileName, Padded(name, 31));
        context_.Profile.DiscModeZ = static_cast<int16_t>(std::stoi(mode));
        context_.DiscountOn = static_cast<int16_t>(std::stoi(on));
        {
            const FailingMemory memory(fails == "memory" ? 1 : 0);
            const FailingDisk disk(fails == "read" ? 2 : 0);
            const auto broken = fails == "reads" ? std::make_unique<BrokenFile>() : nullptr;
            EXPECT_EQ(Told(context_, LoadProfileZP6(&context_)), told) << name << fails;
        }
        const unsigned char* const loaded = context_.Zp6Table;
        const std::string expected = table == "own" ? own : table == "tariff" ? tariff : "";
        EXPECT_EQ(loaded == nullptr, table == "-");
        EXPECT_EQ(std::string(loaded, loaded + expected.size()), expected);
        EXPECT_TRUE(table == "-" || context_.Zp6Count == static_cast<int>(expected.size() / 12));
    }
    WriteFile("ABC.ZP6", tariff);
    LoadProfileZP6(&context_);
    context_.SkipZipTablesFlag = 'Y';
    const auto before = std::make_unique<RateContext>(context_);
    EXPECT_EQ(LoadProfileZP6(&context_), 1);
    ExpectAlikeOutside({}, *before, context_);
}

}  // namespace hundredweight
