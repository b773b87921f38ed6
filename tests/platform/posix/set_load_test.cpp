// Loads from special files, and without file descriptors.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/failing_system.h"
#include "support/set_files.h"

namespace hundredweight {
namespace {

namespace fs = std::filesystem;

using SpecialFilesTest = SampleSetTest;

TEST_F(SpecialFilesTest, WhatIsNoReadableFileCountsAsMissingOrShort) {
    const fs::path pipe = directory_ / "pipe";
    const fs::path no_bytes = "/proc/self/mem";        // None can be read.
    const fs::path few_bytes = directory_ / "hollow";  // Fewer than its length says.
    for (const unsigned set : {0U, kSecondChoices}) {
        WriteSet(set);
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        WriteFile("hollow", std::string(4096, '\n'));
        struct stat status = {};
        ASSERT_EQ(stat(few_bytes.c_str(), &status), 0);
        hollow_file = status.st_ino;
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
    hollow_file = 0;
}

TEST_F(SpecialFilesTest, ALoadRunsOutOfFileDescriptorsAtAnyFile) {
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

}  // namespace
}  // namespace hundredweight
