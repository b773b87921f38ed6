// Which changes of the data end a batch, and which are the batch's own.
#include "batch/data_watch.h"

#include "session/messages.h"
#include "support/explained_samples.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

class DataWatchTest : public ExplainedSamples {
 protected:
    Sources Here() const { return {.data = directory_}; }

    /// The first change, without the directory.
    std::string Change(DataWatch& watch) const {
        const std::string change = watch.Change();
        const std::size_t name = change.rfind(fs::path::preferred_separator);
        return name == change.npos ? change : change.substr(name + 1);
    }
};

TEST_F(DataWatchTest, EveryFileOfTheDataIsWatchedButThoseOfBatches) {
    DataWatch watch(Here(), false);
    EXPECT_EQ(Change(watch), "");
    for (const char* own :
         {"a.ndjson", "a.jsonl", "a.csv", "a.json", "a.html", "a.csv.gz", "a.zst", "a.sqlite",
          "a.db", "a.ndjson.partial", "a.journal", "a.sqlite.partial-journal", "a.log"}) {
        Write(own, "x");
        EXPECT_EQ(Change(watch), "") << own;
    }
    fs::create_directory(directory_ / "more");
    Write("more/SAMPLE.ZP6", "x");
    EXPECT_EQ(Change(watch), "") << "nothing below is read";
    for (const char* name : {"SAMPLE.DEF2", "notes.txt", "csv", "acsv"}) {
        Write(name, "x");
        EXPECT_EQ(Change(watch), std::string(name) + ": has come");
        EXPECT_THROW(watch.RequireUnchanged(), Broken);
        fs::remove(directory_ / name);
        EXPECT_EQ(Change(watch), "");
    }
    for (const char* name : {"SAMPLE.SET", "tolvex-rates.txt", "PROFILE.FIL"}) {
        const std::string content = Content(name);
        std::string other = content;
        other.back() = other.back() == ' ' ? '.' : ' ';
        for (const std::string& changed : {other, content + " ", content.substr(1)}) {
            Write(name, changed);
            EXPECT_EQ(Change(watch), std::string(name) + ": has changed");
            EXPECT_EQ(Change(watch), std::string(name) + ": has changed") << "for good";
            Write(name, content);
            EXPECT_EQ(Change(watch), "") << "what it was";
        }
        fs::rename(directory_ / name, directory_ / "aside.log");
        EXPECT_EQ(Change(watch), std::string(name) + ": is gone");
        fs::rename(directory_ / "aside.log", directory_ / name);
        EXPECT_EQ(Change(watch), "");
    }
    watch.RequireUnchanged();
}

TEST_F(DataWatchTest, PartnersThatAreGivenByTheirPathsAreWatched) {
    fs::create_directory(directory_ / "partners");
    Write("partners/engine", "one");
    Write("partners/guide", "one");
    Sources sources = Here();
    sources.engine = (directory_ / "partners" / "engine").string();
    sources.service_guide = (directory_ / "partners" / "guide").string();
    DataWatch watch(sources), bare(Here());
    EXPECT_TRUE(watch.files().contains(sources.engine));
    for (const char* name : {"engine", "guide"}) {
        const std::string path = std::string("partners/") + name;
        Write(path, "other");
        EXPECT_EQ(Change(watch), std::string(name) + ": has changed");
        EXPECT_EQ(Change(bare), "");
        Write(path, "one");
        EXPECT_EQ(Change(watch), "");
    }
}

TEST_F(DataWatchTest, ProfilesAreConvertedOnceAndWatchedFromThenOn) {
    const std::string profiles = Content("PROFILE.FIL");
    fs::remove(directory_ / "PROFILE.ZSA");
    const auto convert = [&](const std::string& converted) {
        Write("PROFILE.FIL", converted);
        Write("PROFILE.ZSA", "x");
    };
    {
        DataWatch watch(Here());
        convert(profiles + "converted");
        EXPECT_EQ(Change(watch), "") << "a rating's own doing";
        Write("PROFILE.FIL", profiles + "other");
        EXPECT_EQ(Change(watch), "PROFILE.FIL: has changed");
    }
    {
        DataWatch watch(Here());
        convert(profiles);
        EXPECT_EQ(Change(watch), "PROFILE.FIL: has changed") << "they were of today's layout";
    }
    fs::remove(directory_ / "PROFILE.ZSA");
    {
        DataWatch watch(Here(), false);
        convert(profiles + "converted");
        EXPECT_NE(Change(watch), "") << "no rating converts here";
    }
    fs::remove(directory_ / "PROFILE.ZSA");
    {
        DataWatch watch(Here());
        Write("SAMPLE.SET", Content("SAMPLE.SET") + " ");
        convert(profiles + "converted");
        EXPECT_EQ(Change(watch), "SAMPLE.SET: has changed") << "beside a conversion";
    }
}

}  // namespace
}  // namespace cwt
