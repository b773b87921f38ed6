// Tariff sets as text: arbitrary files of a set, exported and built, and arbitrary folders, built.
//
// A part "data/NAME" is a file of the set, "text/NAME" one of the folder.
#include <algorithm>

#include "harness.h"
#include "reference/samples/sample_folder.h"
#include "tariffs/families/family.h"
#include "tariffs/settings_document.h"
#include "tariffs/translation.h"

using namespace hundredweight::fuzz;
namespace samples = hundredweight::samples;

namespace {

constexpr std::string_view kData = "data/";
constexpr std::string_view kText = "text/";
constexpr const char* kSet = "SAMPLE";

/// The least that a folder has.
constexpr const char* kSettings = R"({"schema": "hundredweight/tariff-set/1", "set": "SAMPLE"})";

cwt::Files FilesOf(const Parts& parts, std::string_view prefix) {
    cwt::Files files;
    for (const Part& part : parts) {
        if (part.name.starts_with(prefix)) files[part.name.substr(prefix.size())] = part.content;
    }
    return files;
}

/// Everything that is found has words, and an error a place that people can go to.
bool CheckFindings(const cwt::Translation& translation, const cwt::Files& read) {
    for (const cwt::Finding& finding : translation.findings.list()) {
        Require(!finding.text.empty(), "a finding says what it is");
        Require(!finding.place.file.empty(), "a finding has a place");
        if (finding.level != cwt::Finding::kError) continue;
        const auto file = read.find(finding.place.file);
        const auto lines = [&] { return 1 + std::ranges::count(file->second, '\n'); };
        Require(file == read.end() || finding.place.line <= static_cast<std::size_t>(lines()),
                "an error stands within its file");
    }
    return translation.findings.Has(cwt::Finding::kError);
}

/// What an export leaves out: what is not the set's.
cwt::Files WithoutOthers(cwt::Files files, const cwt::Translation& exported) {
    for (const cwt::Finding& finding : exported.findings.list()) {
        if (finding.text.find("left out") != std::string::npos) files.erase(finding.place.file);
    }
    return files;
}

/// Names as a build writes them.
cwt::Files UnderBuiltNames(const cwt::Files& files, const cwt::Translation& exported) {
    cwt::Files named = files;
    constexpr std::string_view kWords = "a build writes it as ";
    for (const cwt::Finding& finding : exported.findings.list()) {
        if (!finding.text.starts_with(kWords)) continue;
        auto file = named.extract(finding.place.file);
        file.key() = finding.text.substr(kWords.size());
        named.insert(std::move(file));
    }
    return named;
}

void CheckThereAndBack(const cwt::Files& data, const std::string& set,
                       const std::vector<std::string>& options) {
    const cwt::Translation folder = cwt::ExportSet(data, set, options);
    Require(!CheckFindings(folder, data), "any files can be exported");
    const cwt::Translation built = cwt::BuildSet(folder.files);
    Require(!CheckFindings(built, folder.files), "what is exported can be built");
    const cwt::Files kept = UnderBuiltNames(WithoutOthers(data, folder), folder);
    Require(built.files == kept, "what is exported and built is the same");
    const cwt::Translation again = cwt::ExportSet(built.files, set, options);
    Require(again.files == folder.files, "what is built is exported as the same texts");
}

void CheckFolder(const cwt::Files& folder) {
    const cwt::Translation built = cwt::BuildSet(folder);
    if (CheckFindings(built, folder)) return;
    std::size_t size = 0;
    for (const auto& [name, bytes] : built.files) size += bytes.size();
    constexpr std::size_t kLongest = std::size_t{1} << 24;
    if (size > kLongest) return;
    std::vector<std::string> options;
    for (const auto& [name, text] : folder) {
        for (const cwt::Family* family : {&cwt::kOptionFile, &cwt::kEarlierOptionFile}) {
            constexpr std::string_view kCsv = ".csv";
            if (!name.starts_with(family->text) || !name.ends_with(kCsv)) continue;
            const std::size_t begin = std::string_view(family->text).size();
            options.push_back(name.substr(begin, name.size() - begin - kCsv.size()));
        }
    }
    CheckThereAndBack(built.files, built.set, options);
}

}  // namespace

const Parts& hundredweight::fuzz::SampleParts() {
    static const Parts parts = [] {
        Parts all;
        samples::SetOptions options;
        options.mexico = true;
        samples::FileContents data = samples::TariffSetFiles(options);
        options.long_forms = false;
        options.fallbacks = true;
        data.merge(samples::TariffSetFiles(options));
        data.merge(samples::ProfileFiles());
        data["Northeast.ZP6"] = data.at("SAMPLE.ZP6");
        data["NOW.OPT"] = std::string("\1\0\0\0", 4) + std::string(1793, 'o');
        data["OLD.OPT"] = std::string(1792, '\0');
        data["sample.zmc"] = data.at("SAMPLE.ZMC");
        for (const auto& [name, content] : data)
            all.push_back({std::string(kData) + name, content});
        for (const auto& [name, text] : cwt::ExportSet(data, kSet, {"NOW.OPT", "OLD.OPT"}).files) {
            all.push_back({std::string(kText) + name, text.substr(0, kLongestContent)});
        }
        return all;
    }();
    return parts;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
    const Parts parts = ReadParts(input, size);
    const cwt::Files data = FilesOf(parts, kData);
    std::vector<std::string> options;
    for (const auto& [name, bytes] : data) {
        if (name.ends_with(".OPT")) options.push_back(name);
    }
    if (!data.empty()) CheckThereAndBack(data, kSet, options);
    cwt::Files folder = FilesOf(parts, kText);
    if (folder.empty()) return 0;
    folder.try_emplace(cwt::kSettingsFile, kSettings);
    CheckFolder(folder);
    return 0;
}
