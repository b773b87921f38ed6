// Files that users own are kept when a process dies, when several do the same at once, and when
// permissions forbid a change.
#include "support/faults.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ordinary_user.h"

namespace hundredweight {

/// How processes end of which each runs the operation on a disk of its own.
std::set<int> Fork(int count, const Operation& operation, RateContext& context, int nth,
                   Fault fault) {
    std::set<int> exits;
    for (int i = 0; i < count; ++i) {
        if (fork() != 0) continue;
        const FailingDisk disk(nth, fault);
        _exit(operation.run(context) == 1 ? 0 : 1);
    }
    for (int status = 0; wait(&status) > 0;)
        exits.insert(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    return exits;
}

using SharedFilesTest = FaultsTest;
INSTANTIATE_TEST_SUITE_P(, SharedFilesTest, ::testing::ValuesIn(kOperations, kOperations + 8),
                         [](const auto& operation) { return operation.param.name; });

TEST_P(SharedFilesTest, SurviveADeathBeforeAndAfterEveryFileOperation) {
    for (const Fault fault : {Fault::kDiesBefore, Fault::kDiesAfter}) {
        int nth = 1;
        for (std::set<int> exits = {kDied}; exits.contains(kDied); ++nth) {
            SCOPED_TRACE(nth);
            Lay(operation_.before);
            exits = Fork(1, operation_, context_, nth, fault);
            EXPECT_TRUE(exits == std::set{kDied} || exits == std::set{0});
            ExpectOldOrNew();
            ExpectWorks();
        }
        EXPECT_GT(nth, 6);
    }
}

TEST_P(SharedFilesTest, AreChangedByManyProcessesAtOnce) {
    for (const bool locks : {true, false}) {
        FailingDisk::knows_locks = locks;
        for (int time = 0; time < 3; ++time) {
            Lay(operation_.before);
            EXPECT_EQ(Fork(6, operation_, context_, 0, Fault::kAllDelayed), std::set{0});
            EXPECT_TRUE(Content() == after_);
        }
    }
    FailingDisk::knows_locks = true;
}

TEST_P(SharedFilesTest, StayWhenAPermissionIsMissing) {
    for (const auto& [operation, path, code] : kObstacles) {
        const fs::path file = directory_ / path, directory = file.parent_path();
        for (const fs::path& forbidden : {file, directory}) {
            Lay(operation_.before);
            if (operation != operation_.name || !fs::exists(forbidden)) continue;
            for (const auto& entry : fs::recursive_directory_iterator(directory_))
                fs::permissions(entry, fs::perms::all);
            fs::permissions(directory_, fs::perms::all);
            fs::permissions(forbidden, fs::perms(0555));
            for (const bool ordinary : {true, forbidden == directory}) {
                const OrdinaryUser user(ordinary);  // A protected file is so for everybody.
                EXPECT_EQ(Run(), code) << forbidden;
            }
            fs::permissions(forbidden, fs::perms::all);
            EXPECT_TRUE(Content() == operation_.before);
        }
    }
}

TEST_P(SharedFilesTest, AreReadByNobodyWhoCouldNotReadThem) {
    const bool root = geteuid() == 0;
    const uid_t owner = root ? 65534 : geteuid();
    // Before, and after one has written them who cannot give them to their group.
    for (const auto& [before, shrunk] : {std::pair(0600U, 0600U), {0640, 0600}, {0664, 0644}}) {
        for (const bool ordinary : {false, root}) {
            Lay(operation_.before);
            for (const auto& [name, content] : operation_.before) {
                EXPECT_EQ(chown((directory_ / name).c_str(), owner, root ? 65534 : getegid()), 0);
                fs::permissions(directory_ / name, fs::perms(before));
            }
            for (const char* name : {"here", "user"})
                fs::permissions(directory_ / name, fs::perms::all);
            const mode_t mask = umask(0);
            const OrdinaryUser user(ordinary);
            const FailingDisk disk;
            EXPECT_EQ(Run(), "1");
            umask(mask);
            bool made = false;
            for (const auto& [name, content] : after_) {
                const bool is_new = name.ends_with("ZSA") || operation_.before.empty();
                const auto old = operation_.before.find(name);
                const bool changed = old == operation_.before.end() || old->second != content;
                struct stat status;
                EXPECT_EQ(stat((directory_ / name).c_str(), &status), 0);
                EXPECT_EQ(status.st_mode & 0777, is_new                ? 0666
                                                 : ordinary && changed ? shrunk
                                                                       : before)
                    << name;
                EXPECT_EQ(status.st_uid, old == operation_.before.end() ? geteuid() : owner);
                made |= is_new;
            }
            EXPECT_EQ(disk.rights & 0077, made ? 0066U : 0U);
        }
    }
}

TEST_P(SharedFilesTest, AreReplacedWhereTheyLie) {
    // Links stay links, and a name stays in its letters with the rights of its file.
    for (const auto& [path, target] : operation_.before) {
        if (!after_.contains(path) || after_.at(path) == target) continue;
        Lay(operation_.before);
        const fs::path link = directory_ / path, file = directory_ / "there/abc.x";
        fs::create_directory(directory_ / "there");
        fs::rename(link, file);
        fs::create_symlink("../there/abc.x", link);
        const FailingDisk disk;
        EXPECT_EQ(Run(), "1");
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_TRUE(FileContent(file) == after_.at(path)) << path;
        EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1);
        Lay(operation_.before);
        std::string name = link.filename().string();
        std::transform(name.begin(), name.end(), name.begin(), tolower);
        fs::rename(link, link.parent_path() / name);
        fs::permissions(link.parent_path() / name, fs::perms(0600));
        EXPECT_EQ(Run(), "1");
        for (const auto& [written, content] : after_) {
            // A backup has the rights of what it keeps.
            const bool backup = written.ends_with("SAVEPRS.FIL");
            if ((backup ? "here/OPTIONS.FIL" : written) != path) continue;
            const fs::path now = backup ? directory_ / written : link.parent_path() / name;
            EXPECT_EQ(fs::status(now).permissions(), fs::perms(0600)) << now;
        }
        EXPECT_TRUE(FileContent(link.parent_path() / name) == after_.at(path)) << path;
        EXPECT_FALSE(fs::exists(link));
        // Nothing is made where a link leads in vain.
        if (operation_.codes == "121") continue;
        Lay(operation_.before);
        fs::remove(link);
        fs::create_symlink("nowhere", link);
        EXPECT_NE(Run(), "1");
        EXPECT_FALSE(fs::exists(link.parent_path() / "nowhere"));
    }
}

}  // namespace hundredweight
