#include <algorithm>

#include "support/set_files.h"

namespace hundredweight {
namespace {

namespace fs = std::filesystem;

using SetLoadTest = SampleSetTest;

TEST_F(SetLoadTest, AFileIsRequiredUnderItsConditionAndHasItsCodes) {
    for (unsigned step = 0; step < 20; ++step) {
        const unsigned set = step < 10 ? 1U << step & ~kEngine : 1U << (step - 10) | kEngine;
        WriteSet(set);
        for (const auto& [extension, not_read, missing, least, shorter] : kFiles) {
            const fs::path path = File(extension), aside = directory_ / "aside";
            if (!fs::exists(path)) continue;
            SCOPED_TRACE(extension + " of set " + std::to_string(set));
            const bool read = (set & not_read) == 0;
            fs::rename(path, aside);
            EXPECT_EQ(Load(), read ? missing : kLoads) << "missing";
            fs::copy_file(aside, path);
            fs::resize_file(path, least);
            EXPECT_EQ(Load(), kLoads) << "long enough";
            if (least > 0) fs::resize_file(path, least - 1);
            EXPECT_EQ(Load(), read && least > 0 ? shorter : kLoads) << "a byte short";
            Release();
            fs::rename(aside, path);
        }
    }
}

TEST_F(SetLoadTest, ASetLoadsFromFilesNamedInAnyCase) {
    WriteSet(0);
    std::ptrdiff_t upper = 0;  // sample.set, SAMPLE.Acc, ...
    for (const FileFacts& file : kFiles) {
        if (!fs::exists(File(file.extension))) continue;
        std::string name = File(file.extension).filename().string();
        std::transform(name.begin() + upper, name.end(), name.begin() + upper, tolower);
        fs::rename(File(file.extension), directory_ / name);
        upper = 8 - upper;
    }
    EXPECT_EQ(Load(), kLoads);
    EXPECT_TRUE(context_.MexicoFilesLoaded && context_.BsvPresent && context_.ZpsPresent &&
                context_.SzpCount == 3 && context_.WsmCount == 2 && context_.ErrorCode == 0);
}

TEST_F(SetLoadTest, ALoadTellsWhichOptionalFilesThereAre) {
    using Values = std::vector<int32_t>;
    const struct {
        std::set<std::string> omitted;
        unsigned set;
        char zps_switch;
        Values values;  // In the order in which they are compared below.
    } rows[] = {{{}, 0, ' ', {77, 1, 1, 1, 1, 1, 1, 1, 2, 'Y'}},
                {{"BSV", "MET", "CBS"}, kSkipZips, ' ', {460, 1, 1, 0, 0, 0, 1, 0, 2, 'N'}},
                {{"SC", "TRM", "ZPS"}, kSkipZips, ' ', {360, 7, 1, 1, 0, 1, 0, 1, 2, 'Y'}},
                {{"MEF", "CMT", "ZMC"}, 0, '\0', {77, 1, 1, 1, 1, 1, 0, 0, 0, 'N'}},
                {{"WGT", "SRV"}, kEngine, ' ', {380, 1, 0, 1, 1, 0, 1, 1, 2, 'Y'}},
                {{"SC"}, kSecondChoices, 'X', {360, 1, 1, 1, 1, 1, 0, 1, 2, 'Y'}}};
    for (const auto& [omitted, set, zps_switch, values] : rows) {
        WriteSet(set, omitted);
        if (!omitted.contains("BSV")) PutByte("BSV", 68, zps_switch);
        found_ = 7;
        context_.ErrorCode = 77;
        EXPECT_EQ(OpenAllFiles(&context_, &found_), 1);
        const RateContext& c = context_;
        EXPECT_EQ(
            (Values{c.ErrorCode, found_, c.WgtLoaded, c.BsvPresent, c.TrmPresent, c.SrvPresent,
                    c.ZpsPresent, c.MexicoFilesLoaded, c.ZmcCount, c.NameTablesLoaded}),
            values);
        const int32_t second = set == kSecondChoices;
        EXPECT_EQ((Values{c.ZpsSuppressed, c.RtlInUse, c.RclInUse, c.RclInUse2, c.RteFallback}),
                  (Values{zps_switch != ' ', second, second, second, 0}));
        const std::string zeros(628, '\0');
        EXPECT_EQ(memcmp(c.ZpsRecord, zeros.data(), 628) == 0, c.ZpsPresent == 0);
        const bool zp7 = c.MexicoFilesLoaded != 0 && set != kEngine;
        EXPECT_EQ(memcmp(c.Zp7Table, zeros.data(), 43) != 0, zp7);
        Release();
    }
}

TEST_F(SetLoadTest, AFlagIsYesOrNoAndWithLetterPostalCodesNoZipTableIsSkipped) {
    for (const auto& [byte, flag] : {std::pair('Y', 'Y'), {'y', 'N'}, {' ', 'N'}, {'\0', 'N'}}) {
        WriteSet(0);
        for (int i = 197; i <= 213; i += 2) PutByte("SET", i, byte);
        EXPECT_EQ(Load(), kLoads);
        for (int i = 197; i <= 213; i += 2) {
            EXPECT_EQ(context_.SetRecord[i], i == 207 ? 'N' : flag);
        }
        EXPECT_TRUE(context_.Zp6Table && context_.Zf2Entries);
        Release();
    }
}

}  // namespace
}  // namespace hundredweight
