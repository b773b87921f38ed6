// Tariff sets as text: what is exported and built again is the same, to the byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

#include "files/staged_files.h"
#include "reference/samples/file_contents.h"
#include "reference/samples/sample_folder.h"
#include "tariffs/families/family.h"
#include "tariffs/folder_files.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

/// All files that a set can have.
Files WholeSet() {
    hundredweight::samples::SetOptions options;
    options.mexico = true;
    Files files = hundredweight::samples::TariffSetFiles(options);
    options.long_forms = false;
    options.fallbacks = true;
    files.merge(hundredweight::samples::TariffSetFiles(options));
    files.merge(hundredweight::samples::ProfileFiles());
    files.merge(hundredweight::samples::EngineFiles());
    files.merge(hundredweight::samples::ServiceGuideFiles());
    files["PROFILE.ZSA"] = "ZSA";
    files["Northeast.ZP6"] = files["SAMPLE.ZP6"];
    files["NOW.OPT"] = std::string(1797 * 2, 'o');
    files["OLD.OPT"] = std::string(1792 * 2, '\0');
    return files;
}

std::string Told(const Findings& findings, Finding::Level worst) {
    std::string told;
    for (const Finding& finding : findings.list()) {
        if (finding.level >= worst) told += FindingText(finding) + '\n';
    }
    return told;
}

/// Exports and builds; the first file that came back otherwise, or what was refused.
std::string Difference(const Files& data) {
    std::vector<std::string> options;
    for (const char* option : {"NOW.OPT", "OLD.OPT"}) {
        if (data.contains(option)) options.emplace_back(option);
    }
    const Translation folder = ExportSet(data, "SAMPLE", options);
    const Translation built = BuildSet(folder.files);
    if (built.findings.Has(Finding::kError)) return Told(built.findings, Finding::kError);
    for (const auto& [name, bytes] : data) {
        const auto found = built.files.find(name);
        if (found == built.files.end()) return name + " is missing";
        if (found->second != bytes) return name + " differs";
    }
    if (built.files.size() != data.size()) return "there are more files than before";
    if (ExportSet(built.files, "SAMPLE", options).files != folder.files) {
        return "the texts differ";
    }
    return {};
}

TEST(TariffTextTest, FieldsCoverEveryByteOfARecordOnce) {
    std::vector<Family> families = Families();
    families.insert(families.end(), {kZipTable, kOptionFile, kEarlierOptionFile});
    for (const Family& family : families) {
        if (family.shape == Shape::kIndexed || family.shape == Shape::kCarried) continue;
        std::vector<int> covered(family.record_size);
        const auto cover = [&](std::size_t start, const std::vector<Column>& columns) {
            for (const Column& column : columns) {
                for (std::size_t i = 0; i < column.field->width; ++i) {
                    ++covered.at(start + column.offset + i);
                }
            }
        };
        cover(0, ColumnsOf(family.fields));
        for (const Inner& inner : family.inner) {
            for (std::size_t i = 0; i < inner.count; ++i) {
                cover(inner.offset + i * inner.stride, ColumnsOf(inner.fields));
            }
        }
        EXPECT_EQ(covered, std::vector<int>(family.record_size, 1)) << family.words;
    }
}

TEST(TariffTextTest, SampleSetComesBack) {
    EXPECT_EQ(Difference(WholeSet()), "");
}

TEST(TariffTextTest, TheTariffToBeginWithBuildsWithoutADoubt) {
    const Translation built = BuildSet(hundredweight::samples::TemplateFolder());
    for (const Finding& finding : built.findings.list()) ADD_FAILURE() << FindingText(finding);
    EXPECT_TRUE(BuildSet(ExportSet(built.files, built.set).files).files == built.files);
}

/// Damages a file: cut, extended, bytes of every kind in the midst, or bytes of its own doubled.
void Damage(std::string& bytes, std::mt19937& random) {
    const auto below = [&](std::size_t most) { return most == 0 ? 0 : random() % most; };
    const std::size_t at = below(bytes.size());
    switch (below(5)) {
        case 0:
            bytes.resize(at);
            break;
        case 1:
            bytes.append(below(40), static_cast<char>(below(256)));
            break;
        case 2:
            for (std::size_t i = at; i < std::min(at + below(20), bytes.size()); ++i) {
                bytes[i] = static_cast<char>(below(256));
            }
            break;
        case 3:
            bytes.insert(at, bytes.substr(below(bytes.size()), below(60)));
            break;
        default:
            if (!bytes.empty()) bytes[at] = "\0 \xff\r\nN\"h"[below(8)];
    }
}

TEST(TariffTextTest, DamagedSetsComeBack) {
    constexpr int kSets = 1500;
    const Files whole = WholeSet();
    std::mt19937 random(20250106);
    for (int set = 0; set < kSets; ++set) {
        // A few files each, so that many sets take seconds.
        Files data;
        for (int i = 0; i < 3; ++i) {
            auto file = whole.begin();
            std::advance(file, random() % whole.size());
            data.insert(*file);
        }
        for (auto& [name, bytes] : data) {
            for (auto times = random() % 4; times > 0; --times) Damage(bytes, random);
        }
        // A ZIP table is found by a profile's name.
        if (data.contains("Northeast.ZP6")) data["PROFILE.FIL"] = whole.at("PROFILE.FIL");
        ASSERT_EQ(Difference(data), "") << "set " << set;
    }
}

/// Where a folder is refused in which one text has another in its place, and what is said.
std::string RefusalOf(const std::string& file, const std::string& from, const std::string& to) {
    Files folder = ExportSet(WholeSet(), "SAMPLE").files;
    std::string& text = folder.at(file);
    const std::size_t at = text.find(from);
    if (at == text.npos) return from + " is not there";
    text.replace(at, from.size(), to);
    return Told(BuildSet(folder).findings, Finding::kError);
}

TEST(TariffTextTest, WhatSpreadsheetsAndSlipsMakeOfATextIsRefusedWithItsPlace) {
    const struct {
        const char *file, *from, *to, *refusal;
    } cases[] = {
        {"weight-breaks.csv", "499", "\"1,205\"", "weight-breaks.csv:2:5: error: highest_pounds"},
        {"discount-groups.csv", "85.00", "$85.00",
         "discount-groups.csv:2:62: error: floor_dollars"},
        {"minimums-by-zip.csv", "30000", "3E+04", "minimums-by-zip.csv:2:3: error: first_low"},
        {"point-codes.csv", "10000", "'10000", "point-codes.csv:2:1: error: first"},
        {"level.csv", "2025-01-06", "01/06/2025", "level.csv:2:8: error: date"},
        {"level.csv", "2025-01-06", "2025-02-30", "is no day of the calendar"},
        {"tables.csv", "name,host_bytes", "name;host_bytes",
         "tables.csv:1:1: error: between cells"},
        {"dch.csv", "host_bytes", "hosts_bytes", "dch.csv:1:1: error: the header has none"},
        {"lam.csv", "ATLANT", "hex:41", "lam.csv:2:1: error: key"},
        {"carried-bytes.csv", "BSE,18,", "BSE,99999999,", "carried-bytes.csv:2:5: error: times"},
        {"settings.json", "\"set\"", "\"set\": \"B\", \"set\"", "set: the key is there twice"},
        {"settings.json", "\"layout\": 1", "\"layout\": true", "is written as true or false"},
        {"settings.json", "\"label_files\": false", "\"label_files\": 1", "is a number, where"},
        {"settings.json", "\"mark\": \"SET\"", "\"mark\": null", "mark: null is no value"},
    };
    for (const auto& each : cases) {
        EXPECT_NE(RefusalOf(each.file, each.from, each.to).find(each.refusal), std::string::npos)
            << each.to << ": " << RefusalOf(each.file, each.from, each.to);
    }
}

TEST(TariffTextTest, BlankCellsAndRowsBehindATableAreNothing) {
    Files folder = ExportSet(WholeSet(), "SAMPLE").files;
    std::string text;
    for (const char byte : folder.at("point-codes.csv"))
        text += byte == '\n' ? ",,\n" : std::string{byte};
    folder["point-codes.csv"] = text + ",,\n\n,,,,,,\n";
    const Translation built = BuildSet(folder);
    EXPECT_EQ(Told(built.findings, Finding::kWarning), "");
    EXPECT_EQ(built.files.at("SAMPLE.CBS"), WholeSet().at("SAMPLE.CBS"));
}

TEST(TariffTextTest, FilesTakeTheirPlacesTogetherOrNot) {
    namespace fs = std::filesystem;
    const fs::path directory = fs::path(testing::TempDir()) / "staged_files";
    fs::remove_all(directory);
    WriteFiles(directory, {{"a.set", "old"}, {"B", "old"}, {"C", "mine"}, {"D/x", "mine"}});
    const auto content = [&] { return ReadFiles(directory, true); };
    const Files before = content();
    Replacement replacement{
        .coming = {"A.SET", "B", "C"}, .leaving = {}, .kept = {"C"}, .heart = "A.SET"};
    replacement.leaving = {"a.set"};
    {
        StagedFiles staged(directory);
        WriteFiles(staged.path(), {{"A.SET", "new"}, {"B", "new"}, {"C", "new"}});
        EXPECT_THROW(StagedFiles{directory}, std::runtime_error) << "another is at work";
        Replacement wrong = replacement;
        wrong.coming.push_back("D");
        EXPECT_THROW(staged.Install(wrong), std::runtime_error) << "a directory is in the way";
        EXPECT_EQ(content(), before);
        wrong.coming.back() = "missing";
        EXPECT_THROW(staged.Install(wrong), std::runtime_error);
        EXPECT_EQ(content(), before);
        staged.Install(replacement);
    }
    const Files after = {
        {"A.SET", "new"}, {"B", "new"}, {"C", "new"}, {"C.bak", "mine"}, {"D/x", "mine"}};
    EXPECT_EQ(content(), after);
    EXPECT_FALSE(fs::exists(directory / ".cwt-staged"));

    // A process ended when it had put away what was there.
    fs::create_directories(directory / ".cwt-staged" / "old-heart");
    fs::rename(directory / "A.SET", directory / ".cwt-staged" / "old-heart" / "A.SET");
    WriteFiles(directory / ".cwt-staged", {{"old/E", "mine"}, {"new/F", "new"}, {"lock", ""}});
    EXPECT_TRUE(StagedFiles(directory).found_leftovers());
    EXPECT_EQ(content().count("A.SET") + content().count("F"), 0u);
    EXPECT_EQ(content().at("E"), "mine");
}

}  // namespace
}  // namespace cwt
