#include "reference/samples/sample_data.h"

#include <fstream>
#include <stdexcept>

#include "reference/samples/carrier_files.h"
#include "reference/samples/file_contents.h"

namespace hundredweight::samples {
namespace {

void WriteFiles(const std::filesystem::path& directory, const FileContents& files) {
    std::filesystem::create_directories(directory);
    for (const auto& [name, content] : files) {
        remove(directory / name);
        std::ofstream file(directory / name, std::ios::binary | std::ios::trunc);
        file << content;
        file.close();
        if (!file) throw std::runtime_error((directory / name).string() + ": cannot be written");
    }
}

/// All sample data, by the folder that they lie in.
std::map<std::string, FileContents> AllFiles() {
    std::map<std::string, FileContents> folders;
    for (const FileContents& files :
         {TariffSetFiles({}), EngineFiles(), ServiceGuideFiles(), ProfileFiles()}) {
        folders[""].insert(files.begin(), files.end());
    }
    folders["shipments"] = Shipments();
    return folders;
}

}  // namespace

void WriteTariffSet(const std::filesystem::path& directory, const SetOptions& options) {
    WriteFiles(directory, TariffSetFiles(options));
}

void WriteEngineData(const std::filesystem::path& directory) {
    WriteFiles(directory, EngineFiles());
}

void WriteServiceGuideData(const std::filesystem::path& directory) {
    WriteFiles(directory, ServiceGuideFiles());
}

void WriteProfiles(const std::filesystem::path& directory) {
    WriteFiles(directory, ProfileFiles());
}

void WriteShipments(const std::filesystem::path& directory) {
    WriteFiles(directory, Shipments());
}

void WriteSampleData(const std::filesystem::path& directory, Size size) {
    std::map<std::string, FileContents> folders = AllFiles();
    FileContents settings;
    settings.insert(folders[""].extract(std::string(kBaseName) + ".SET"));
    // Without its settings a set is none: one that is not written to its end is not rated by.
    for (const auto& [name, content] : settings) remove(directory / name);
    for (const auto& [folder, files] : folders) WriteFiles(directory / folder, files);
    if (size == Size::kCarrier) {
        for (const CarrierFile& file : CarrierFiles()) {
            WriteFiles(directory, {{file.name, file.build()}});
        }
    }
    WriteFiles(directory, settings);
}

std::filesystem::path FindSampleFile(const std::filesystem::path& directory) {
    for (const auto& [folder, files] : AllFiles()) {
        for (const auto& [name, content] : files) {
            std::filesystem::path file = directory / folder / name;
            if (exists(symlink_status(file))) return file;
        }
    }
    return {};
}

}  // namespace hundredweight::samples
