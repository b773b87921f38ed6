#include "reference/samples/sample_data.h"

#include <fstream>
#include <stdexcept>

#include "reference/samples/file_contents.h"
#include "reference/samples/profile_file.h"
#include "reference/samples/service_guide_files.h"

namespace hundredweight::samples {
namespace {

void WriteFiles(const std::filesystem::path& directory, const FileContents& files) {
    std::filesystem::create_directories(directory);
    for (const auto& [name, content] : files) {
        std::ofstream file(directory / name, std::ios::binary | std::ios::trunc);
        file << content;
        file.close();
        if (!file) throw std::runtime_error((directory / name).string() + ": cannot be written");
    }
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

void WriteSampleData(const std::filesystem::path& directory) {
    WriteTariffSet(directory);
    WriteEngineData(directory);
    WriteServiceGuideData(directory);
    WriteProfiles(directory);
    WriteShipments(directory / "shipments");
}

}  // namespace hundredweight::samples
