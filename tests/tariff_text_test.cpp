// Tariff sets as text: what is exported and built again is the same, to the byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "reference/samples/file_contents.h"
#include "tariffs/family.h"
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
    constexpr int kSets = 10'000;
    const Files whole = WholeSet();
    std::mt19937 random(20250106);
    for (int set = 0; set < kSets; ++set) {
        // A few files each, so that ten thousand sets take seconds.
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

}  // namespace
}  // namespace cwt
