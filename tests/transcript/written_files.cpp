#include "transcript/written_files.h"

#include <hundredweight/exports.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "bill/record_text.h"
#include "reference/samples/sample_data.h"

namespace hundredweight::transcript {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kOldOptionRecord = 1792;
constexpr std::size_t kProfile = sizeof(ProfileRecord);

void Expect(bool done, const char* what) {
    if (!done) throw std::runtime_error(std::string(what) + " failed");
}

/// An empty directory that is the current one and the user's.
struct UserDirectory {
    UserDirectory(const fs::path& data, const fs::path& user) {
        fs::create_directories(user);
        fs::current_path(user);
        std::strcpy(context->DataDir, (data / "").string().c_str());
        std::strcpy(context->UserDir, (user / "").string().c_str());
        std::strcpy(context->FileBase, samples::kBaseName);
    }
    ~UserDirectory() { CloseAllFiles(context.get()); }

    const std::unique_ptr<RateContext> context = std::make_unique<RateContext>();
};

/// Bytes that tell where they stand.
std::string Numbered(std::size_t size) {
    std::string bytes(size, '\0');
    int value = 1;
    for (char& byte : bytes) byte = static_cast<char>(value = value * 5 % 251);
    return bytes;
}

void Write(const fs::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

void WriteDefaults(const fs::path& data, const fs::path& user) {
    const UserDirectory directory(data, user);
    RateContext* const context = directory.context.get();
    int32_t found = 0;
    context->UseEngine = 0;
    Expect(OpenAllFiles(context, &found) == 1, "OpenAllFiles");
    Expect(ReadCOZFile(context) == 1 && ReadDiscFile(context) == 1, "ReadDiscFile");
    Write("loaded.record", cwt::RecordText(*context));
    std::memcpy(context->Profile.ProfileName, "Northeast", sizeof "Northeast");
    Expect(ReadProfileFile(context) && GetProfileRecord(context) == 1, "GetProfileRecord");
    LoadProfileSettings(context);
    Expect(WriteDefFile(context) == 1 && WriteMexicoDefFile(context) == 1, "WriteDefFile");
    Expect(WriteAccFile(context) == 1, "WriteAccFile");
}

void MakeProfiles(const fs::path& data, const fs::path& user) {
    const UserDirectory directory(data, user);
    Expect(ReadProfileFile(directory.context.get()), "ReadProfileFile");
}

void ConvertProfiles(const fs::path& data, const fs::path& user) {
    const UserDirectory directory(data, user);
    std::string profiles = Numbered(2 * kProfile);
    for (const std::size_t record : {std::size_t{0}, kProfile}) {
        profiles.replace(record + offsetof(ProfileRecord, ZipDiscounts), 5, "     ");
        profiles.replace(record + offsetof(ProfileRecord, ZipDiscountCount), 2, "\5\0", 2);
    }
    Write("PROFILE.FIL", profiles);
    Expect(ReadProfileFile(directory.context.get()), "the conversion of profiles");
}

void ConvertOptions(const fs::path& user) {
    fs::create_directories(user);
    fs::current_path(user);
    Write("OPTIONS.FIL", "FIRST" + std::string(20, '\0') + Numbered(2 * kOldOptionRecord - 25));
    OptionRecord record;
    Expect(ReadFendroOpt("OPTIONS.FIL", &record, "FIRST") == 1, "the conversion of options");
}

}  // namespace

void WriteUserFiles(const fs::path& directory) {
    const fs::path data = fs::absolute(directory), before = fs::current_path();
    samples::SetOptions own_tables;
    own_tables.engine = false;
    own_tables.mexico = true;
    samples::WriteTariffSet(data / "own-tables", own_tables);
    samples::WriteProfiles(data / "own-tables");
    WriteDefaults(data / "own-tables", data / "user/defaults");
    MakeProfiles(data, data / "user/copied-profiles");
    MakeProfiles(data / "shipments", data / "user/default-profile");
    ConvertProfiles(data, data / "user/converted-profiles");
    ConvertOptions(data / "user/converted-options");
    fs::current_path(before);
}

}  // namespace hundredweight::transcript
