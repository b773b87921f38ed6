// The files that users own: profiles, option records, defaults, discounts, and what is written of
// them after it has been read.
#include <algorithm>
#include <array>

#include "harness.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;

namespace {

constexpr const char* kOptions = "OPTIONS.FIL";
constexpr std::string_view kMayExist[] = {"PROFILE.FIL", "PROFILE.ZSA", "OPTIONS.FIL",
                                          "SAVEPRS.FIL", "TEMPPRS.FIL", "SAMPLE.DEF",
                                          "SAMPLE.MEF",  "SAMPLE.ACC",  "SAMPLE.DIS"};

DataDirectory& Directory() {
    static DataDirectory directory([] {
        samples::FileContents files;
        samples::SetOptions options;
        options.mexico = true;
        const samples::FileContents set = samples::TariffSetFiles(options);
        for (const char* extension :
             {"SET", "DEF", "MEF", "MET", "ACC", "DIS", "ZMC", "LVL", "COZ", "SCC", "DCH"}) {
            const std::string name = std::string("SAMPLE.") + extension;
            files[name] = set.at(name);
        }
        files["PROFILE.FIL"] = "";
        return files;
    }());
    return directory;
}

void ReadProfiles(Record& record) {
    const auto read = [](RateContext* context) { return ReadProfileFile(context) ? 1 : 0; };
    // A copied template is converted by the next call.
    read(&*record);
    if (record.CallTwice("a profile file is made ready once", read) == 0) return;
    const samples::FileContents ready = Directory().UserFiles();
    const int32_t count = GetProfileSize(&*record);
    std::array<char, sizeof record->Profile.ProfileName> name;
    for (int32_t number = -1; number <= std::min(count, 3); ++number) {
        const bool found = GetProfileKey(&*record, number, name.data()) == 1;
        Require(found == (number >= 0 && number < count), "every profile has a name");
        if (!found) continue;
        std::copy(name.begin(), name.end(), record->Profile.ProfileName);
        Require(GetProfileRecord(&*record) == 1 && record->ProfileIndex <= number,
                "a profile is found by its name");
        record.CallTwice("a profile takes effect alike twice", [](RateContext* context) {
            LoadProfileSettings(context);
            context->ProfileTurnedOff = 0;
            LoadDiscounts(context, nullptr, 0);
            return 1;
        });
    }
    Require(Directory().UserFiles() == ready, "reading profiles changes no file");
}

void ReadOptions(const std::string& name) {
    const auto first = std::make_unique<OptionRecord>();
    const auto second = std::make_unique<OptionRecord>();
    const samples::FileContents before = Directory().UserFiles();
    const int32_t found = ReadFendroOpt(kOptions, first.get(), name.c_str());
    const samples::FileContents after = Directory().UserFiles();
    if (!before.contains(kOptions)) {
        Require(found == 0 && after == before, "where there is no option file none is made");
        return;
    }
    Require(ReadFendroOpt(kOptions, second.get(), name.c_str()) == found &&
                (found == 0 || std::memcmp(first.get(), second.get(), sizeof *first) == 0),
            "an option file reads alike twice");
    Require(Directory().UserFiles() == after, "an option file is converted once");
    Require(
        after.at(kOptions) == before.at(kOptions) || after.at("SAVEPRS.FIL") == before.at(kOptions),
        "a conversion keeps the old file");
}

void WriteAfterRead(Record& record) {
    if (ReadDefFile(&*record) == 1) {
        const std::string read(record->DefRecord, sizeof record->DefRecord);
        Require(WriteDefFile(&*record) == 1, "defaults that were read can be written");
        Require(ReadDefFile(&*record) == 1 &&
                    read == std::string_view(record->DefRecord, sizeof record->DefRecord),
                "defaults read as they were written");
    }
    record.CallTwice("defaults of the Mexican part are written alike twice", WriteMexicoDefFile);
    if (WriteAccFile(&*record) == 1) {
        const auto count = static_cast<std::size_t>(std::clamp(+record->AccCount, 0, 100));
        Require(
            Directory().UserFiles().at("SAMPLE.ACC").size() == count * sizeof record->AccRecords[0],
            "every accessorial item is written");
    }
}

}  // namespace

const Parts& fuzz::SampleParts() {
    static const Parts parts = [] {
        Parts all = Directory().FileParts();
        all.insert(all.end(), {{"user/PROFILE.FIL", ""},
                               {"user/PROFILE.ZSA", "ZSA"},
                               {"user/OPTIONS.FIL", ""},
                               {"user/SAVEPRS.FIL", ""},
                               {"user/TEMPPRS.FIL", ""},
                               {"user/SAMPLE.DEF", ""},
                               {"user/SAMPLE.DIS", ""},
                               {"option name", ""},
                               {"ProfilesInDataDir", "Y"},
                               {"UseEngine", ""},
                               {"AccCount", "\2"},
                               {"ZipLength", "3"},
                               {"OrigZip", "30303"},
                               {"DestZip", "M5H2N2"},
                               {"OrigState", "GA"},
                               {"DestState", "ON"}});
        return all;
    }();
    return parts;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const Parts parts = ReadParts(data, size);
    Directory().Put(parts);
    {
        Record record(Directory());
        record->UseEngine = 1;
        int32_t found = 0;
        OpenAllFiles(&*record, &found);
        record.PutFields(parts);
        record.CallTwice("a discount file reads alike twice", ReadDiscFile);
        record.CallTwice("a COZ file reads alike twice", ReadCOZFile);
        record.CallTwice("a level file reads alike twice",
                         [](RateContext* context) { return OpenLevelFile(context, "SAMPLE.LVL"); });
        ReadProfiles(record);
        ReadOptions(std::string(ContentOf(parts, "option name")).c_str());
        WriteAfterRead(record);
    }
    for (const auto& [name, content] : Directory().UserFiles()) {
        Require(std::ranges::count(kMayExist, name) == 1, "no temporary is left");
    }
    Directory().Restore();
    return 0;
}
