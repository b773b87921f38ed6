// The files that users own, and the ways in which the library changes them.
#pragma once

#include <map>

#include "support/failing_disk.h"
#include "support/table.h"

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
inline int32_t HWT_CALL ReadProfiles(RateContext* context) {
    return ReadProfileFile(context);
}
inline int32_t HWT_CALL FindOption(RateContext*) {
    OptionRecord record;
    return ReadFendroOpt("OPTIONS.FIL", &record, "SECOND");
}

/// One way in which the library changes files of a user.
struct Change {
    const char* name;
    int32_t(HWT_CALL* run)(RateContext*);
    std::string codes;  ///< Those of a failure.
    Files before;
    /// What may not be, of the files in the order of their names: N new, O old. A backup is to be
    /// there before the new content, a marker after it.
    std::string never = {};

    friend void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }
};
inline const std::string kItems(12300, 'a'), kTwo = ProfileBytes("ONE") + ProfileBytes("TWO");
inline const std::string kOptions = Padded(Padded("FIRST", 1792, 'f') + "SECOND", 3584);
inline const Files kDefaults = {{"here/ABC.DEF", "old"}, {"user/ABC.MEF", kItems}};
inline const Files kOptionFiles = {{"here/OPTIONS.FIL", kOptions}, {"here/SAVEPRS.FIL", "earlier"}};
inline const Change kChanges[] = {
    {"MakesDefaults", WriteDefFile, "241 245 160 161", {}, "ON"},
    {"WritesDefaults", WriteDefFile, "241 245 160 161", kDefaults, "ON"},
    {"WritesMexicoDefaults", WriteMexicoDefFile, "160 161", {{"user/ABC.MEF", "old"}}},
    {"WritesItems", WriteAccFile, "520 246", {{"here/ABC.ACC", kItems}}},
    {"MakesProfiles", ReadProfiles, "121", {}},
    {"CopiesProfiles", ReadProfiles, "121", {{"PROFILE.FIL", Padded("ONE", 17897)}}},
    {"ConvertsProfiles", ReadProfiles, "121", {{"user/PROFILE.FIL", kTwo}}, "ON"},
    {"ConvertsOptions", FindOption, "0", kOptionFiles, "NO"}};

class UserFilesTest : public ::testing::WithParamInterface<Change>, public TariffTest {
 protected:
    UserFilesTest() {
        PutText(context_.UserDir, (directory_ / "user/").string());
        FillField(context_.DefRecord, 'N');
        FillField(context_.MefRecord, 'M');
        FillField(context_.AccRecords[0], 'A');
        context_.AccCount = 3;
        context_.MexicoFilesLoaded = 1;
        Lay(change_.before);
        EXPECT_TRUE(Works());
        after_ = Content();
        Lay(change_.before);
    }
    ~UserFilesTest() override { fs::current_path(current_path_); }

    /// Lays files into an empty directory.
    void Lay(const Files& files) const {
        fs::current_path(directory_);
        for (const auto& entry : fs::directory_iterator(directory_)) fs::remove_all(entry.path());
        for (const char* name : {"here", "user"}) fs::create_directory(name);
        for (const auto& [name, content] : files) WriteFile(name, content);
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
    bool Works(RateContext& context) const {
        const std::string told = Told(context, change_.run(&context));
        EXPECT_TRUE(told[0] == '1' || change_.codes.find(told.substr(2)) + 1 != 0) << told;
        return told[0] == '1';
    }
    bool Works() const { return Works(*std::make_unique<RateContext>(context_)); }
    /// For each file N, O, or ? when it is not whole.
    std::string State() const {
        const auto in = [](const Files& files, const std::string& name) {
            return files.contains(name) ? files.at(name) : "none";
        };
        std::string state;
        for (const Files now = Content(); const auto& [name, content] : after_)
            state += in(now, name) == content                    ? "N"
                     : in(now, name) == in(change_.before, name) ? "O"
                                                                 : "?";
        EXPECT_TRUE(state.find('?') == state.npos && state != change_.never) << state;
        return state;
    }
    std::string Done() const { return std::string(after_.size(), 'N'); }

    const Change& change_ = GetParam();
    const fs::path current_path_ = fs::current_path();
    Files after_;  ///< What the change leaves when nothing is in its way.
};

}  // namespace hundredweight
