// Loads from special files.
#include <sys/stat.h>

#include "support/set_files.h"

namespace hundredweight {
namespace {

namespace fs = std::filesystem;

using SpecialFilesTest = SampleSetTest;

TEST_F(SpecialFilesTest, WhatIsNoFileCountsAsMissing) {
    const fs::path pipe = directory_ / "pipe";
    for (const unsigned set : {0U, kSecondChoices}) {
        WriteSet(set);
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        for (const auto& [extension, not_read, missing, least, shorter] : kFiles) {
            const fs::path path = File(extension), aside = directory_ / "aside";
            if (!fs::exists(path)) continue;
            fs::rename(path, aside);
            for (const fs::path& target : {directory_, path, pipe}) {
                fs::create_symlink(target, path);
                EXPECT_EQ(Load(), missing) << extension << " is " << target;
                Release();
                fs::remove(path);
            }
            fs::rename(aside, path);
        }
    }
}

}  // namespace
}  // namespace hundredweight
