// Loads from special files.
#include <sys/stat.h>

#include "support/failing_disk.h"
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

using ListedFilesTest = SampleSetTest;

TEST_F(ListedFilesTest, MissingNamesMakeALoadListADirectoryOnce) {
    // UserDir, what the set has not, and how many listings that makes.
    for (const auto& [user, missing, listings] :
         Table<3>(". . 0  . MEF 1  . MEF,MET,SC,BSV,ZMC,SZP,WSM 1  ./ SC,MEF,ZMC 1  user/ . 1 "
                  "user/ SC,ZMC 2  user/../ MEF,WSM 1")) {
        SCOPED_TRACE(user + ' ' + missing);
        WriteSet(0);
        fs::create_directory(directory_ / "user");
        PutText(context_.UserDir, directory_.string() + "/" + user);
        std::istringstream extensions(missing);
        for (std::string each; std::getline(extensions, each, ',');) fs::remove(File(each));
        const FailingDisk disk;
        EXPECT_EQ(Load(), kLoads);
        EXPECT_EQ(std::to_string(disk.directories_listed), listings);
    }
}

TEST_F(ListedFilesTest, OfManyNamesInOtherLettersTheFirstFileIsRead) {
    WriteSet(0);
    CopyText(context_.UserDir, context_.DataDir);
    const std::string base = "SAMPLE.";
    for (int i = 0; i < 300; ++i) WriteFile("sample.x" + std::to_string(i), "");
    for (const std::string extension : {"SC", "MEF", "WSM", "SZP"}) {
        fs::create_directory(directory_ / (base + static_cast<char>(tolower(extension[0])) +
                                           extension.substr(1)));  // No file.
        fs::rename(File(extension), directory_ / ("SAMPLe." + extension));
        for (const char* later : {"SaMPLE.", "sample.", "sAMPLE."})
            WriteFile(later + extension, "short");
    }
    const FailingDisk disk;
    EXPECT_EQ(Load(), kLoads);
    EXPECT_EQ(disk.directories_listed, 1);
    EXPECT_TRUE(context_.ErrorCode == 0 && context_.MexicoFilesLoaded && context_.SzpCount == 3 &&
                context_.WsmCount == 2);
}

}  // namespace
}  // namespace hundredweight
