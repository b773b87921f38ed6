// Files that users own are kept when the process dies or permissions forbid a change.
#include "support/user_files.h"

#include <sys/wait.h>
#include <unistd.h>

namespace hundredweight {

using ForbiddenChangesTest = UserFilesTest;
INSTANTIATE_TEST_SUITE_P(, ForbiddenChangesTest, ::testing::ValuesIn(kChanges),
                         [](const auto& change) { return change.param.name; });

TEST_P(ForbiddenChangesTest, SurviveADeathAtEveryFileOperation) {
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

/// A user who may do what permissions say, also when the tests are run by one who may do all.
struct OrdinaryUser {
    OrdinaryUser() { EXPECT_EQ(root_ ? seteuid(65534) : 0, 0); }
    ~OrdinaryUser() { EXPECT_EQ(root_ ? seteuid(0) : 0, 0); }
    const bool root_ = geteuid() == 0;
};

TEST_P(ForbiddenChangesTest, StayWhenAPermissionIsMissing) {
    for (const auto& [change, path, code] : Table<3>(R"(
        MakesDefaults here 241     WritesMexicoDefaults user 160  WritesItems here 520
        MakesProfiles user 121     CopiesProfiles user 121        ConvertsProfiles user 121
        ConvertsOptions here 0     ConvertsProfiles user/PROFILE.FIL 121
        ConvertsOptions here/OPTIONS.FIL 0)")) {
        if (change != change_.name) continue;
        SCOPED_TRACE(path);
        Lay(change_.before);
        fs::permissions(directory_, fs::perms::all);
        for (const auto& entry : fs::recursive_directory_iterator(directory_))
            fs::permissions(entry.path(), fs::perms::all);
        fs::permissions(directory_ / path, fs::perms(0555));
        auto user = std::make_unique<OrdinaryUser>();
        EXPECT_EQ(Told(context_, change_.run(&context_)), "0:" + code);
        user.reset();
        fs::permissions(directory_ / path, fs::perms::all);
        EXPECT_TRUE(Content() == change_.before);
    }
}

}  // namespace hundredweight
