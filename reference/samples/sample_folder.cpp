#include "reference/samples/sample_folder.h"

#include <hundredweight_sample_files_files.h>

#include <stdexcept>

#include "tariffs/translation.h"

namespace hundredweight::samples {

FileContents SampleFolder(std::string_view name) {
    const std::string folder = std::string(name) + '/';
    FileContents files;
    for (const cwt::EmbeddedFile& file : cwt::kSampleFiles) {
        if (!file.name.starts_with(folder)) continue;
        files[std::string(file.name.substr(folder.size()))] = file.bytes;
    }
    return files;
}

FileContents TemplateFolder() {
    FileContents files = SampleFolder("template");
    const FileContents sample = SampleFolder("tariff");
    for (const char* name : {"states.csv", "engine/states.csv"}) files[name] = sample.at(name);
    return files;
}

const FileContents& BuiltFolder(std::string_view name) {
    static std::map<std::string, FileContents, std::less<>> built;
    const auto found = built.find(name);
    if (found != built.end()) return found->second;
    cwt::Translation translation = cwt::BuildSet(SampleFolder(name));
    for (const cwt::Finding& finding : translation.findings.list()) {
        if (finding.level == cwt::Finding::kError) {
            throw std::logic_error(cwt::FindingText(finding));
        }
    }
    return built[std::string(name)] = std::move(translation.files);
}

}  // namespace hundredweight::samples
