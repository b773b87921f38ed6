#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>

#include "support/failing_system.h"
#include "support/sample_set.h"

namespace hundredweight {
namespace {

namespace fs = std::filesystem;

struct FileFacts {
    std::string extension;
    unsigned not_read;     // Variations of the set in which a load does without the file; in others
    int32_t missing;       // what a load ends with when there is no such file,
    std::uintmax_t least;  // the bytes that it must have, 0 when all that it has are read,
    int32_t shorter;       // and what a load ends with when fewer can be read.
};
constexpr unsigned kNever = 0, kOwnZp7 = kEngine | kNoZp7, kOwnLab = kEngine | kNoLab,
                   kOwnZips = kEngine | kSkipZips, kOwnBase = kEngine | kNoBase,
                   kOwnBse = kOwnBase | kNoBse, kOwnMca = kOwnBase | kNoMca;
const FileFacts kFiles[] = {
    {"SET", kNever, 370, 283, 374},       {"ACC", kNoAcc, 490, 123, 494},
    {"SCC", kSkipZips, 460, 0, 460},      {"ZP6", kSkipZips, 436, 0, 438},
    {"WGT", kEngine, 380, 21, 385},       {"MCH", kEngine, 182, 0, 324},
    {"CLS", kEngine, 230, 5, 235},        {"ZFM", kEngine, 456, 29, 457},
    {"ZP7", kOwnZp7, 582, 0, 584},        {"ZF2", kOwnZips, 410, 38, 414},
    {"RTC", kOwnZips, 350, 0, kLoads},    {"RCL", kOwnZips, 350, 0, kLoads},
    {"BSC", kOwnZips, 480, 96, 484},      {"FAC", kOwnBase, 260, 802, 264},
    {"FCC", kOwnZips, 260, 1352, 264},    {"BSE", kOwnBse, 220, 1328, 224},
    {"ZF1", kOwnBase, 390, 29, 394},      {"LA", kOwnBase, 270, 0, 274},
    {"RBA", kOwnBase, 340, 0, 344},       {"LMC", kOwnBase, 181, 0, 314},
    {"MC", kOwnBase, 181, 0, 314},        {"LCA", kOwnMca, 183, 0, 534},
    {"MCA", kOwnMca, 183, 0, 534},        {"LAB", kOwnLab, 280, 0, kLoads},
    {"LAM", kOwnLab, 290, 0, kLoads},     {"ADJ", kOwnLab, 210, 0, 214},
    {"TBL", kEngine, 450, 0, kLoads},     {"RTE", kEngine, 350, 0, kLoads},
    {"RTL", kEngine, 350, 0, kLoads},     {"BSV", kNever, kLoads, 75, 225},
    {"ZPS", kNever, kLoads, 628, 444},    {"MEF", kNever, kLoads, 350, kLoads},
    {"MET", kNever, kLoads, 283, kLoads}, {"SC", kNever, kLoads, 3996, kLoads},
    {"WSM", kNever, kLoads, 7, kLoads},   {"CBS", kNever, kLoads, 0, kLoads},
    {"CMT", kNever, kLoads, 0, kLoads},   {"SZP", kNever, kLoads, 0, kLoads},
    {"DCH", kNever, 269, 0, 269}};

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

TEST_F(SetLoadTest, WhatIsNoReadableFileCountsAsMissingOrShort) {
    const fs::path pipe = directory_ / "pipe";
    const fs::path no_bytes = "/proc/self/mem";                   // None can be read.
    const fs::path few_bytes = "/sys/devices/system/cpu/online";  // Fewer than its length says.
    for (const unsigned set : {0U, kSecondChoices}) {
        WriteSet(set);
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        for (const auto& [extension, not_read, missing, least, shorter] : kFiles) {
            const fs::path path = File(extension), aside = directory_ / "aside";
            if (!fs::exists(path)) continue;
            fs::rename(path, aside);
            for (const fs::path& target : {directory_, path, pipe, no_bytes, few_bytes}) {
                fs::create_symlink(target, path);
                int32_t code = missing;
                if (target == few_bytes || target == no_bytes) code = shorter;
                if (target == no_bytes && least == 0) code = extension == "LAB" ? 284 : kLoads;
                if (target != few_bytes || least == 0) {
                    EXPECT_EQ(Load(), code) << extension << " is " << target;
                }
                Release();
                fs::remove(path);
            }
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

TEST_F(SetLoadTest, ALoadRunsOutOfFileDescriptorsAtAnyFile) {
    // By the number of free ones: each file that stays open takes one, all others share one.
    const std::vector<int32_t> codes[] = {
        {370, 582, 350, 260, 260, 220, 390, 270, 290, 450, 269, 269, kLoads},
        {370, 269, 269, kLoads}};
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit lowered = {128, before.rlim_max};
    for (const unsigned set : {0U, kEngine}) {
        WriteSet(set);
        for (std::size_t free = 0; free < codes[set].size(); ++free) {
            setrlimit(RLIMIT_NOFILE, &lowered);
            std::vector<int> taken;
            for (int each; (each = dup(2)) >= 0;) taken.push_back(each);
            for (std::size_t i = 0; i < free; ++i) close(taken[i]);
            const int32_t code = Load();
            for (std::size_t i = free; i < taken.size(); ++i) close(taken[i]);
            setrlimit(RLIMIT_NOFILE, &before);
            EXPECT_EQ(code, codes[set][free]) << free << " free descriptors";
            Release();
        }
    }
}

TEST_F(SetLoadTest, ALoadRunsOutOfMemoryAtAnyTable) {
    WriteSet(0);
    std::vector<int32_t> codes;
    int without_names = 0;
    for (int nth = 1; nth <= 30; ++nth) {
        const FailingMemory memory(nth);
        codes.push_back(Load());
        if (codes.back() == kLoads && context_.NameTablesLoaded == 'N') ++without_names;
        Release();
    }
    EXPECT_EQ(codes.back(), kLoads) << "with fewer than 30 allocations";
    EXPECT_EQ(without_names, 2) << "CBS and CMT";
    for (const int32_t code : {460, 168, 193, 583, 414, 272, 342, 312, 362, 269}) {
        EXPECT_EQ(std::ranges::count(codes, code), 1) << code;
    }
}

}  // namespace
}  // namespace hundredweight
