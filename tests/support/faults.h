// The functions that read and write files, and what is to hold of each when the system fails it.
#pragma once

#include <map>

#include "reference/samples/sample_data.h"
#include "support/failing_disk.h"
#include "support/table.h"
#include "tariff/name_tables.h"

namespace hundredweight {
namespace fs = std::filesystem;

/// Contents by path below the test's directory.
using Files = std::map<std::string, std::string>;

/// A profile of two ZIP-range discounts, of which the first is a state record.
inline std::string ProfileBytes(std::string_view name) {
    std::string bytes = Padded(name, 17897);
    Put(bytes, 243, "     ");
    Put(bytes, 243 + 117, "10000");
    return bytes.replace(17793, 1, "\2");
}

/// One function on some files.
struct Operation {
    const char* name;
    int32_t (*run)(RateContext&);
    std::string codes;  ///< Those of its failures, each of which some failing call brings about.
    Files before;
    /// What may not be, of the files in the order of their names: N new, O old. A backup is to be
    /// there before the new content, a marker after it.
    std::string never = {};
    int32_t (*first)(RateContext&) = nullptr;  ///< What the record has behind it.

    friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};
inline int32_t Load(RateContext& context) {
    int32_t found = 0;
    return OpenAllFiles(&context, &found);
}
inline int32_t LoadForEngine(RateContext& context) {
    context.UseEngine = 1;
    return Load(context);
}
inline int32_t ConvertProfiles(RateContext& context) {
    context.ProfileFileCurrent = 'N';
    return ReadProfileFile(&context);
}
inline int32_t FindOption(RateContext&) {
    OptionRecord record;
    return ReadFendroOpt("OPTIONS.FIL", &record, "SECOND");
}
inline int32_t ReadProfiles(RateContext& context) {
    char name[31];
    return GetProfileRecord(&context) == 1 && GetProfileKey(&context, 1, name) == 1 &&
           GetProfileSize(&context) == 2;
}
#define HWT_RUN(call) [](RateContext& context) -> int32_t { return call(&context); }

inline const std::string kItems(12300, 'a'), kTwo = ProfileBytes("ONE") + ProfileBytes("TWO"),
                                             kOptions = Padded(Padded("FIRST", 1792, 'f') +
                                                                   "SECOND",
                                                               3584);
inline const Files kSampleSet = {{"SAMPLE.SET", "and all others of the set"}};
inline const std::string kLoadCodes =
    "168 181 182 183 193 210 214 220 224 225 230 235 260 264 269 270 272 274 280 290 312 314 324 "
    "340 342 344 "
    "350 362 370 374 380 385 390 394 410 414 436 438 444 450 456 457 460 480 484 490 494 534 582 "
    "583 584";
inline const Operation kOperations[] = {
    {"MakesDefaults", HWT_RUN(WriteDefFile), "160 161 241 245", {}, "ON"},
    {"WritesDefaults",
     HWT_RUN(WriteDefFile),
     "160 161 241 245",
     {{"here/ABC.DEF", "old"}, {"user/ABC.MEF", kItems}},
     "ON"},
    {"WritesMexicoDefaults", HWT_RUN(WriteMexicoDefFile), "160 161", {{"user/ABC.MEF", "old"}}},
    {"WritesItems", HWT_RUN(WriteAccFile), "246 520", {{"here/ABC.ACC", kItems}}},
    {"MakesProfiles", HWT_RUN(ReadProfileFile), "121", {}},
    {"CopiesProfiles", HWT_RUN(ReadProfileFile), "121", {{"PROFILE.FIL", kTwo}}},
    {"ConvertsProfiles", ConvertProfiles, "121", {{"user/PROFILE.FIL", kTwo}}, "ON"},
    {"ConvertsOptions",
     FindOption,
     "0",
     {{"here/OPTIONS.FIL", kOptions}, {"here/SAVEPRS.FIL", "earlier"}},
     "NO"},
    {"ReadsProfiles", ReadProfiles, "125 126", {{"user/PROFILE.FIL", kTwo}}},
    {"ReadsDefaults", HWT_RUN(ReadDefFile), "240 244", {{"user/ABC.DEF", std::string(348, 'd')}}},
    {"ReadsWeights", HWT_RUN(ReadWgtFile), "380 385", {{"ABC.WGT", Padded("", 189, '1')}}},
    {"ReadsDiscounts", HWT_RUN(ReadDiscFile), "250 254", {{"ABC.DIS", Padded("", 605)}}},
    {"ReadsCoz", HWT_RUN(ReadCOZFile), "0 150 151", {{"ABC.COZ", kItems}}},
    {"ReadsLevels",
     [](RateContext& context) { return OpenLevelFile(&context, "L"); },
     "300 302 304",
     {{"L", kItems}}},
    {"ReadsOwnZips", HWT_RUN(LoadProfileZP6), "436", {{"TWO.ZP6", kItems}, {"ABC.ZP6", kItems}}},
    {"ReadsNames", [](RateContext& context) { return ReadNameTables(context); }, "0", kSampleSet},
    {"LoadsASet", Load, kLoadCodes, kSampleSet},
    {"LoadsASetForTheEngine", LoadForEngine, "168 225 269 370 374 436 438 444 460 490 494",
     kSampleSet},
    {"LoadsASetAgain", Load, kLoadCodes, kSampleSet, "", Load}};

/// What is not replaced when it is a directory or may not be written, and what is told then.
inline const auto kObstacles = Table<3>(R"(
    WritesDefaults here/ABC.DEF 241        WritesMexicoDefaults user/ABC.MEF 160
    WritesItems here/ABC.ACC 520           MakesProfiles user/PROFILE.FIL 121
    CopiesProfiles user/PROFILE.FIL 121    ConvertsProfiles user/PROFILE.FIL 121
    ConvertsProfiles user/PROFILE.TMP 121  ConvertsOptions here/OPTIONS.FIL 0
    ConvertsOptions here/TEMPPRS.FIL 0     ConvertsOptions here/SAVEPRS.FIL 0)");

class FaultsTest : public ::testing::WithParamInterface<Operation>, public TariffTest {
 protected:
    FaultsTest() {
        PutText(context_.UserDir, (directory_ / "user/").string());
        FillField(context_.DefRecord, 'N');
        FillField(context_.MefRecord, 'M');
        FillField(context_.AccRecords[0], 'A');
        CopyText(context_.Profile.ProfileName, "TWO");
        context_.Profile.DiscModeZ = context_.DiscountOn = 1;
        context_.AccCount = 3;
        context_.ProfileFileCurrent = 'Y';
        context_.MexicoFilesLoaded = 1;
        if (operation_.before == kSampleSet) PutText(context_.FileBase, samples::kBaseName);
        Lay(operation_.before);
        EXPECT_EQ(Run(), "1");
        after_ = Content();
        Lay(operation_.before);
    }
    ~FaultsTest() override { fs::current_path(current_path_); }

    bool Writes() const { return after_ != operation_.before && operation_.before != kSampleSet; }
    /// Lays files into an empty directory.
    void Lay(const Files& files) const {
        if (!after_.empty() && !Writes()) return;
        fs::current_path(directory_);
        for (const auto& entry : fs::directory_iterator(directory_)) fs::remove_all(entry.path());
        for (const char* name : {"here", "user"}) fs::create_directory(name);
        for (const auto& [name, content] : files) WriteFile(name, content);
        if (operation_.before == kSampleSet) {
            samples::SetOptions options;
            options.engine = false;
            options.mexico = true;
            samples::WriteTariffSet(directory_, options);
        }
        fs::current_path("here");
    }
    std::string Name(const fs::path& path) const {
        return path.lexically_relative(directory_).generic_string();
    }
    Files Content() const {
        Files files;
        for (const auto& entry : fs::recursive_directory_iterator(directory_))
            if (entry.is_regular_file()) files[Name(entry.path())] = FileContent(entry.path());
        return files;
    }
    /// "1", or the code of a failure.
    std::string Run(RateContext& context) const {
        context.ErrorCode = 0;
        const bool works = operation_.run(context) == 1;
        return works ? "1" : std::to_string(context.ErrorCode);
    }
    /// On a record that is released again.
    std::string Run() const {
        const auto context = std::make_unique<RateContext>(context_);
        const std::string told = Run(*context);
        CloseAllFiles(context.get());
        return told;
    }
    /// For each file N, O, or ? when it is not whole.
    void ExpectOldOrNew() const {
        std::string state;
        Files now = Content(), old = operation_.before;
        for (const auto& [name, content] : after_)
            state += now[name] == content ? 'N' : now[name] == old[name] ? 'O' : '?';
        EXPECT_TRUE(state.find('?') == state.npos && state != operation_.never) << state;
    }
    void ExpectWorks() const {
        EXPECT_EQ(Run(), "1");
        EXPECT_TRUE(!Writes() || Content() == after_);
    }

    const Operation& operation_ = GetParam();
    const fs::path current_path_ = fs::current_path();
    Files after_;  ///< What the operation leaves when nothing is in its way.
};

}  // namespace hundredweight
