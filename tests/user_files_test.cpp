// Files that users own are never lost. Whenever the writing of one is cut short, the old content or
// the new one stands whole under its name, and the next run works.
#include <sys/wait.h>
#include <unistd.h>

#include <map>

#include "support/failing_disk.h"
#include "support/table.h"

namespace hundredweight {
namespace fs = std::filesystem;

/// Contents by path below the test's directory.
using Files = std::map<std::string, std::string>;

/// A profile of two ZIP-range discounts, of which the first is a state record.
std::string ProfileBytes(std::string_view name) {
    std::string bytes = Padded(name, 17897);
    Put(bytes, 243, "     ");
    Put(bytes, 243 + 117, "10000");
    return bytes.replace(17793, 1, "\2");
}
int32_t ReadProfiles(RateContext* context) {
    return ReadProfileFile(context);
}
int32_t FindOption(RateContext*) {
    OptionRecord record;
    return ReadFendroOpt("OPTIONS.FIL", &record, "SECOND");
}

/// One way in which the library changes files of a user.
struct Change {
    const char* name;
    int32_t (*run)(RateContext*);
    std::string codes;  ///< Those of a failure.
    Files before;
    /// What may not be, of the files in the order of their names: N new, O old. A backup is to be
    /// there before the new content, a marker after it.
    std::string never = {};

    friend void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }
};
const std::string kItems(12300, 'a'), kTwo = ProfileBytes("ONE") + ProfileBytes("TWO");
const std::string kOptions = Padded(Padded("FIRST", 1792, 'f') + "SECOND", 3584);
const Files kDefaults = {{"here/ABC.DEF", "old"}, {"user/ABC.MEF", kItems}};
const Files kOptionFiles = {{"here/OPTIONS.FIL", kOptions}, {"here/SAVEPRS.FIL", "earlier"}};
const Change kChanges[] = {
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
    Files Content() const {
        Files files;
        for (const auto& entry : fs::recursive_directory_iterator(directory_))
            if (entry.is_regular_file())
                files[entry.path().lexically_relative(directory_)] = FileContent(entry.path());
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
INSTANTIATE_TEST_SUITE_P(, UserFilesTest, ::testing::ValuesIn(kChanges),
                         [](const auto& change) { return change.param.name; });

TEST_P(UserFilesTest, SurviveTheFailureOfEveryFileOperation) {
    for (const Cut cut : {Cut::kOneFails, Cut::kAllFailFromThere}) {
        int nth = 1;
        for (bool struck = true; struck; ++nth) {
            SCOPED_TRACE((cut == Cut::kOneFails ? "at " : "from ") + std::to_string(nth));
            Lay(change_.before);
            const auto context = std::make_unique<RateContext>(context_);
            auto disk = std::make_unique<FailingDisk>(nth, cut);
            const bool works = Works(*context);
            struck = disk->struck;
            EXPECT_FALSE(disk->named_unflushed || (works && disk->content_struck));
            disk.reset();
            EXPECT_TRUE(State() == Done() || !works);
            for (const auto& [name, content] : Content())
                EXPECT_TRUE(works || cut != Cut::kOneFails || after_.contains(name)) << name;
            EXPECT_TRUE(Works(*context));
            EXPECT_EQ(State()[0], 'N');
            EXPECT_TRUE(Works());
            EXPECT_EQ(State(), Done());
        }
        EXPECT_GT(nth, 6);
    }
}

TEST_P(UserFilesTest, SurviveADeathAtEveryFileOperation) {
    for (int nth = 1, status = kDied; status == kDied; ++nth) {
        SCOPED_TRACE(nth);
        Lay(change_.before);
        const pid_t child = fork();
        if (child == 0) {
            const FailingDisk disk(nth, Cut::kProcessDies);
            _exit(change_.run(&context_) == 1 ? 0 : 1);
        }
        ASSERT_EQ(waitpid(child, &status, 0), child);
        status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        EXPECT_TRUE(status == kDied || (status == 0 && nth > 5)) << status;
        State();
        EXPECT_TRUE(Works());
        EXPECT_EQ(State(), Done());
    }
}

TEST_P(UserFilesTest, AreNotWrittenThroughAStrangersFile) {
    Files laid = change_.before, after = after_;
    {
        const FailingDisk disk;
        EXPECT_TRUE(Works());
        for (const fs::path path : disk.created) {
            const std::string name = path.lexically_relative(directory_);
            const bool own = path.filename() == "PROFILE.TMP" || path.filename() == "TEMPPRS.FIL";
            if (!own && !after_.contains(name)) after[name] = laid[name] = "a stranger's";
        }
    }
    Lay(laid);
    EXPECT_TRUE(Works());
    EXPECT_TRUE(Content() == after);
}

/// A user who may do what permissions say, also when the tests are run by one who may do all.
struct OrdinaryUser {
    OrdinaryUser() { EXPECT_EQ(root_ ? seteuid(65534) : 0, 0); }
    ~OrdinaryUser() { EXPECT_EQ(root_ ? seteuid(0) : 0, 0); }
    const bool root_ = geteuid() == 0;
};

TEST_P(UserFilesTest, StayWhenADirectoryOrAPermissionIsInTheWay) {
    for (const auto& [change, path, obstacle, code] : Table<4>(R"(
        WritesDefaults here/ABC.DEF is 241        MakesDefaults here may 241
        WritesMexicoDefaults user/ABC.MEF is 160  WritesMexicoDefaults user may 160
        WritesItems here/ABC.ACC is 520           WritesItems here may 520
        MakesProfiles user/PROFILE.FIL is 121     MakesProfiles user may 121
        CopiesProfiles user/PROFILE.FIL is 121    CopiesProfiles user may 121
        ConvertsProfiles user/PROFILE.FIL is 121  ConvertsProfiles user/PROFILE.FIL may 121
        ConvertsProfiles user/PROFILE.TMP is 121  ConvertsProfiles user may 121
        ConvertsOptions here/OPTIONS.FIL is 0     ConvertsOptions here/OPTIONS.FIL may 0
        ConvertsOptions here/TEMPPRS.FIL is 0     ConvertsOptions here may 0
        ConvertsOptions here/SAVEPRS.FIL is 0)")) {
        if (change != change_.name) continue;
        SCOPED_TRACE(path + ' ' + obstacle);
        Files files = change_.before;
        if (obstacle == "is") files.erase(path);
        Lay(files);
        if (obstacle == "is") {
            fs::create_directory(directory_ / path);
            WriteFile(path + "/inside", files[path + "/inside"] = "inside");
        }
        fs::permissions(directory_, fs::perms::all);
        for (const auto& entry : fs::recursive_directory_iterator(directory_))
            fs::permissions(entry.path(), fs::perms::all);
        if (obstacle == "may") fs::permissions(directory_ / path, fs::perms(0555));
        auto user = std::make_unique<OrdinaryUser>();
        EXPECT_EQ(Told(context_, change_.run(&context_)), "0:" + code);
        user.reset();
        fs::permissions(directory_ / path, fs::perms::all);
        EXPECT_TRUE(Content() == files);
    }
}

}  // namespace hundredweight
