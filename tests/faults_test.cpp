// Whenever the system fails a function, the function tells, nothing leaks, the next call works, and
// files that users own are never lost: the old content or the new one stands whole under the name.
#include "support/faults.h"

#include "platform/temporary_name.h"
#include "support/failing_system.h"

namespace hundredweight {
INSTANTIATE_TEST_SUITE_P(, FaultsTest, ::testing::ValuesIn(kOperations),
                         [](const auto& operation) { return operation.param.name; });

TEST_P(FaultsTest, OfEveryFileOperationAndAllocationAreSurvived) {
    std::set<std::string> told;
    const auto fail_in_turn = [&](bool memory_fails, Fault fault) {
        bool struck = true;
        int nth = 1;
        for (; struck; ++nth) {
            SCOPED_TRACE(std::to_string(nth) + (memory_fails ? "" : " comes to ") +
                         std::to_string(static_cast<int>(fault)));
            Lay(operation_.before);
            const auto context = std::make_unique<RateContext>(context_);
            if (operation_.first != nullptr) {
                EXPECT_EQ(operation_.first(*context), 1);
            }
            auto memory = std::make_unique<FailingMemory>(memory_fails ? nth : 0);
            auto disk = std::make_unique<FailingDisk>(memory_fails ? 0 : nth, fault);
            const std::string outcome = Run(*context);
            struck = disk->struck || (memory_fails && allocations_to_failure == 0);
            const bool works = outcome == "1";
            EXPECT_FALSE(disk->named_unflushed);
            EXPECT_FALSE(works && disk->content_struck);
            disk.reset();
            memory.reset();
            if (!works) told.insert(outcome);
            EXPECT_TRUE(works || struck);
            EXPECT_TRUE(works || (fault != Fault::kInterrupted && fault != Fault::kShort));
            ExpectOldOrNew();
            for (const auto& [name, content] : Content())
                EXPECT_TRUE(fault == Fault::kAllFailFromThere || after_.contains(name)) << name;
            EXPECT_TRUE(!works || Content() == after_);
            EXPECT_EQ(Run(*context), "1");
            CloseAllFiles(context.get());
            ExpectWorks();
        }
        return nth;
    };
    for (const Fault fault : kFaults) EXPECT_GT(fail_in_turn(false, fault), 4);
    fail_in_turn(true, Fault::kIoError);
    std::string codes;
    for (const std::string& code : told) codes += (codes.empty() ? "" : " ") + code;
    EXPECT_EQ(codes, operation_.codes);
}

TEST_P(FaultsTest, LeaveNothingThatStays) {
    if (!Writes()) return;
    Files laid = operation_.before, after = after_;
    constexpr uint32_t kEnded = 0x3FFFFF;  // No system gives this number to a process.
    const std::string killed(platform::MakeTemporaryName(kEnded));
    const std::string running(platform::MakeTemporaryName(~0U));  // On another machine.
    for (const std::string directory : {"here/", "user/"}) {
        for (const char* name : {"HWTRATES.DAT", "HWT0", "hwt00000.~00", "HWT00000.~000"})
            after[directory + name] = laid[directory + name] = "a stranger's";
        after[directory + running] = laid[directory + running] = "another machine's";
        laid[directory + killed] = "left by a process that was killed";
    }
    Lay(laid);
    EXPECT_EQ(Run(), "1");
    Files now = Content();
    // In a directory that nothing was written in, nothing is removed.
    const auto left =
        std::erase_if(now, [&](const auto& file) { return file.first.ends_with(killed); });
    EXPECT_TRUE(now == after);
    EXPECT_LE(left, 1U);
}

TEST_P(FaultsTest, ADirectoryInTheWayStays) {
    for (const auto& [operation, path, code] : kObstacles) {
        if (operation != operation_.name) continue;
        SCOPED_TRACE(path);
        Files files = operation_.before;
        files.erase(path);
        Lay(files);
        fs::create_directory(directory_ / path);
        WriteFile(path + "/inside", files[path + "/inside"] = "inside");
        EXPECT_EQ(Run(), code);
        EXPECT_TRUE(Content() == files);
    }
}

}  // namespace hundredweight
