// Files that users own are never lost. Whenever the writing of one is cut short, the old content or
// the new one stands whole under its name, and the next run works.
#include "support/user_files.h"

namespace hundredweight {
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

TEST_P(UserFilesTest, AreNotWrittenThroughAStrangersFile) {
    Files laid = change_.before, after = after_;
    {
        const FailingDisk disk;
        EXPECT_TRUE(Works());
        for (const fs::path path : disk.created) {
            const std::string name = Name(path);
            const bool own = path.filename() == "PROFILE.TMP" || path.filename() == "TEMPPRS.FIL";
            if (!own && !after_.contains(name)) after[name] = laid[name] = "a stranger's";
        }
    }
    Lay(laid);
    EXPECT_TRUE(Works());
    EXPECT_TRUE(Content() == after);
}

TEST_P(UserFilesTest, StayWhenADirectoryIsInTheWay) {
    for (const auto& [change, path, code] : Table<3>(R"(
        WritesDefaults here/ABC.DEF 241        WritesMexicoDefaults user/ABC.MEF 160
        WritesItems here/ABC.ACC 520           MakesProfiles user/PROFILE.FIL 121
        CopiesProfiles user/PROFILE.FIL 121    ConvertsProfiles user/PROFILE.FIL 121
        ConvertsProfiles user/PROFILE.TMP 121  ConvertsOptions here/OPTIONS.FIL 0
        ConvertsOptions here/TEMPPRS.FIL 0     ConvertsOptions here/SAVEPRS.FIL 0)")) {
        if (change != change_.name) continue;
        SCOPED_TRACE(path);
        Files files = change_.before;
        files.erase(path);
        Lay(files);
        fs::create_directory(directory_ / path);
        WriteFile(path + "/inside", files[path + "/inside"] = "inside");
        EXPECT_EQ(Told(context_, change_.run(&context_)), "0:" + code);
        EXPECT_TRUE(Content() == files);
    }
}

}  // namespace hundredweight
