// What file names do where case and trailing blanks tell.
#include "tariff/data_file.h"

#include <thread>

#include "platform/directory_listing.h"
#include "platform/file.h"
#include "support/ordinary_user.h"
#include "support/resident_files.h"

namespace hundredweight {
namespace {

struct ExactNamesTest : TariffTest {
    std::string Content(const char* extension) const {
        char content[16];
        const OpenFile file = OpenDataFile(context_, extension);
        return file ? std::string(content, platform::ReadBytes(file.handle(), content, 16)) : "-";
    }
};

TEST_F(ExactNamesTest, CaseIsFoldedInTheLastComponentAlone) {
    WriteFile("ABC.LA ", "blank");
    EXPECT_EQ(Content(".LA "), "-");
    WriteFile("ABC.ZP6", "exact");
    WriteFile("abc.zp6", "folded");
    EXPECT_EQ(Content(".ZP6"), "exact");
    std::filesystem::create_directory(directory_ / "Set");
    WriteFile("Set/ABC.ZP6", "other");
    for (const auto& [name, content] : {std::pair{"SET/", "-"}, {"Set/", "other"}}) {
        PutText(context_.DataDir, (directory_ / name).string());
        EXPECT_EQ(Content(".ZP6"), content);
    }
}

TEST_F(ExactNamesTest, TodaysNameIsLookedForNotYesterdays) {
    const ClockAhead settled(3);
    for (const auto& [name, minimum] : {std::pair{"abc.zmc", 1}, {"abC.zmc", 2}, {"ABC.ZMC", 3}}) {
        LetTheClockTick();
        WriteFile(name, ChargeBytes(static_cast<float>(minimum)));
        for (int look = 0; look < 3; ++look)
            EXPECT_EQ(MinimumFound(context_), std::to_string(minimum));
    }
    std::filesystem::remove(directory_ / "ABC.ZMC");
    EXPECT_EQ(MinimumFound(context_), "2");
}

TEST_F(ExactNamesTest, WhatALoadHasListedServesItsThreadAlone) {
    const platform::DirectoryListing load;
    EXPECT_EQ(Content(".LA"), "-");
    WriteFile("abc.la", "late");
    std::string elsewhere;
    std::thread([&] { elsewhere = Content(".LA"); }).join();
    EXPECT_EQ(elsewhere + Content(".LA"), "late-");
}

TEST_F(ExactNamesTest, AKnownFileIsNotOpenedUnlessItsRightsHaveChanged) {
    namespace fs = std::filesystem;
    const ClockAhead settled(3);
    const fs::path file = directory_ / "ABC.ZMC";
    fs::permissions(directory_, fs::perms::all);
    WriteFile("ABC.ZMC", ChargeBytes(1));
    const auto minimum_found = [&] {
        const OrdinaryUser user;
        return MinimumFound(context_);
    };
    for (const auto& [place, rights] : {std::pair{file, 0444}, {directory_, 0777}}) {
        for (int look = 0; look < 2; ++look) EXPECT_EQ(minimum_found(), "1");
        {
            const FailingDisk disk(1, Fault::kAllFailFromThere);
            EXPECT_EQ(minimum_found(), "1");
            EXPECT_FALSE(disk.struck);
        }
        LetTheClockTick();
        fs::permissions(place, fs::perms::none);
        EXPECT_EQ(minimum_found(), "none") << place;
        fs::permissions(place, fs::perms(rights));
    }
}

TEST(Separators, AreSlashAndBackslash) {
    EXPECT_TRUE(platform::IsSeparator('/') && platform::IsSeparator('\\'));
    EXPECT_FALSE(platform::IsSeparator(':'));
}

}  // namespace
}  // namespace hundredweight
