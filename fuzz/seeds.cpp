// Writes valid inputs of every target to a directory, each target's in its own below it.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <span>

#include "calls.h"
#include "reference/samples/bytes.h"
#include "reference/samples/sample_folder.h"

using namespace hundredweight;
using namespace hundredweight::fuzz;
using samples::Bytes;

namespace {

std::filesystem::path directory;

void Write(const std::string& target, const std::string& name, const std::string& content) {
    std::filesystem::create_directories(directory / target);
    std::ofstream(directory / target / name, std::ios::binary) << content;
}
void Write(const std::string& target, const std::string& name, const Parts& parts) {
    Write(target, name, PartBytes(parts));
}

void Put(std::span<char> field, std::string_view text) {
    samples::Padded(text, field.size()).copy(field.data(), field.size());
}

/// A literal with the zero bytes in it.
template <std::size_t Size>
std::string Raw(const char (&literal)[Size]) {
    return {literal, Size - 1};
}

const Part kOwnTables = {"UseEngine", Bytes(int32_t{0})};
const Part kEngine = {"UseEngine", Bytes(int32_t{1})};
const Parts kShipment = {{"OrigZip", "30303"},
                         {"DestZip", "60601"},
                         {"OrigState", "GA"},
                         {"DestState", "IL"},
                         {"OrigCity", "Atlanta"},
                         {"DestCity", "Chicago"},
                         {"TariffName", "SMPLNATL"},
                         {"LevelFileDate", "01-06-2025"},
                         {"LineClass", Raw("70\0\0\0"
                                           "100")},
                         {"LineWeight", Raw("1205\0\0\0"
                                            "695")}};

Parts With(Parts parts, const Parts& more) {
    parts.insert(parts.end(), more.begin(), more.end());
    return parts;
}

/// The files of a set that is rated by its own tables.
samples::FileContents OwnTables() {
    samples::SetOptions options;
    options.engine = false;
    return samples::TariffSetFiles(options);
}

void WriteSets() {
    Write("set", "own_tables", {kOwnTables});
    Write("set", "second_choices",
          {kOwnTables,
           {"-SAMPLE.LMC", ""},
           {"-SAMPLE.LCA", ""},
           {"-SAMPLE.RTE", ""},
           {"-SAMPLE.RTC", ""}});
    // A line shorter than its entry once brought bytes of an earlier load.
    Write("set", "short_line", {kOwnTables, {"SAMPLE.LAM", "A\r\nATLANTD01\r\n"}});
    Write("set", "engine", {kEngine});
    auto profile = std::make_unique<ProfileRecord>();
    std::strcpy(profile->ProfileName, "Default");
    profile->DiscModeZ = 1;
    Write("set", "profile",
          {kEngine,
           {"SAMPLE.SET", OwnTables().at("SAMPLE.SET")},
           {"Profile", Bytes(*profile).substr(0, sizeof *profile)},
           {"DiscountOn", Bytes(int16_t{1})}});
}

/// An answer with figures in every field that the library prints.
EngineRateRecord RatedAnswer(std::string_view status) {
    EngineRateRecord record;
    Put({reinterpret_cast<char*>(&record), sizeof record}, "");
    Put(record.Status, status);
    Put(record.RateCode, "002041");
    Put(record.TotalWeight, "001900");
    Put(record.BilledWeight, "002000");
    Put(record.MinChargeFirst, "0095.00");
    Put(record.MinChargeSecond, "0012.50");
    Put(record.ExtraRate, "0038.30");
    Put(record.ExtraWeight, "000100");
    Put(record.ExtraCharge, "000038.30");
    Put(record.NetCharge, "   469.73");
    Put(record.DiscountAmount, "   392.19");
    Put(record.DiscountPercent, "45.50");
    for (EngineClassLine& line : record.ClassLines) {
        Put(line.Rate, "0038.30");
        Put(line.Charge, "000461.52");
    }
    std::memset(record.RateTable, 0, sizeof record.RateTable);
    record.Tables = {};
    for (const char* code : {"100", "70"}) {
        Put(record.Tables.ClassCodes[record.Tables.ClassCount++], code);
    }
    for (const int32_t weight : {1, 500, 1000}) {
        record.Tables.WeightBreaks[record.Tables.WeightBreakCount] = weight;
        record.BreakWeights[record.Tables.WeightBreakCount] = weight;
        record.BreakAmounts[record.Tables.WeightBreakCount] = 100 * weight;
        record.BreakKinds[record.Tables.WeightBreakCount++] = weight == 1 ? '1' : '2';
    }
    record.BreakEntryCount = 3;
    return record;
}

void WriteEngineAnswers() {
    EngineListBlock list = {};
    list.Capacity = sizeof list.Entries;
    list.Count = 3;
    for (EngineAlternative& entry : list.Entries) entry = {{'G', 'A'}, "Atlanta", 0};
    const Parts answers = {{"effective count", Bytes(int32_t{3})},
                           {"effective tables", Bytes(int32_t{3})},
                           {"effective table", "SMPLNATL20250106"},
                           {"version", std::string(108, 'V')},
                           {"tables", Bytes(RatedAnswer("").Tables)},
                           {"result", Bytes(int64_t{960})},
                           {"list", Bytes(list)},
                           {"error", "0123Point not found"},
                           {"state", "GA"},
                           {"calls", CallBytes("GetCurrentEfcRec", "SMPLNATL 2025 01 06") +
                                         CallBytes("SetClassesAndWeights", "\1") +
                                         CallBytes("TolvexGetStateCode", "\00530303") +
                                         CallBytes("VerClass", "\00270") + CallBytes("VerWeight") +
                                         CallBytes("LoadDiscounts") + CallBytes("EndTolvexdll")}};
    for (const char* status : {"    ", "0011", "0123", "0007"}) {
        const Parts rate = {{"rate", Bytes(RatedAnswer(status))}};
        Write("engine", status, With(With(answers, kShipment), rate));
        Write("engine", std::string("loaded") + status,
              With(With(answers, kShipment), With(rate, {{"load", "1"}})));
    }
}

void WriteGuideAnswers() {
    ServiceGuideBlock block = {};
    std::memset(&block.Terminal, 'T', sizeof block.Terminal);
    for (const char* status : {"1001", "1002", "1101"}) {
        Put(block.Status, status);
        Write("service_guide", status,
              {{"start", "1001"},
               {"both points", Bytes(block)},
               {"first point", "1001"},
               {"second point", "1001"},
               {"first terminal", "1001"},
               {"second terminal", Bytes(block)},
               {"OrigZip", "30303"},
               {"DestZip", "M5H2N2"},
               {"BlankUnknownTerminals", "Y"}});
    }
}

void WriteUserFiles() {
    const std::string profiles = samples::ProfileFiles().at("PROFILE.FIL");
    Write("user_files", "profiles", {{"user/PROFILE.FIL", profiles}});
    Write("user_files", "converted", {{"user/PROFILE.FIL", profiles}, {"user/PROFILE.ZSA", "ZSA"}});
    OptionRecord option = {};
    option.LayoutMarker = 1;
    std::strcpy(option.OptName, "Rates");
    const std::string current = Bytes(option);
    Write("user_files", "options", {{"user/OPTIONS.FIL", current}, {"option name", "Rates"}});
    constexpr std::size_t kOldSize = 1792;
    const std::string old = std::string(option.OptName) + std::string(kOldSize - 5, '\0');
    Write("user_files", "old_options", {{"user/OPTIONS.FIL", old + old}, {"option name", "Rates"}});
}

void WriteRecords() {
    const std::string loads = CallBytes("ReadDefFile") + CallBytes("OpenAllFiles") +
                              CallBytes("InitializeTolvexdll") + CallBytes("ReadDiscFile");
    const std::string checks =
        CallBytes("VerOrigZip") + CallBytes("VerDestZip") + CallBytes("VerTerritory") +
        CallBytes("VerClass", Raw("\00270\0\0\0\0")) +
        CallBytes("VerWeight", Raw("1205\0\0\0\0\0\0")) + CallBytes("GetStateCode", "\00530303") +
        CallBytes("GetZipcIndex", "\1M");
    const std::string rating =
        CallBytes("LoadDiscounts", Raw("\0")) + CallBytes("RateShipment", Bytes(int32_t{0}));
    const std::string guide = CallBytes("InitializeSGdll") + CallBytes("GetService") +
                              CallBytes("GetTerminals") + CallBytes("EndSGdll");
    const std::string profiles = CallBytes("ReadProfileFile") + CallBytes("GetProfileSize") +
                                 CallBytes("GetProfileKey", Bytes(int32_t{0})) +
                                 CallBytes("GetProfileRecord") + CallBytes("LoadProfileSettings") +
                                 CallBytes("LoadProfileZP6");
    const std::string writes = CallBytes("WriteDefFile") + CallBytes("WriteAccFile") +
                               CallBytes("WriteMexicoDefFile") + CallBytes("CloseAllFiles");
    const Part use_guide = {"UseServiceGuide", Bytes(int32_t{1})};
    for (const std::string& calls : {checks, rating, guide, profiles, writes}) {
        const std::string name = "calls" + std::to_string(static_cast<int>(calls[0]));
        Write("record", name,
              With(kShipment, {{"first", loads}, kEngine, use_guide, {"calls", loads + calls}}));
        Write("record", name + "_unloaded", With(kShipment, {kEngine, {"calls", calls}}));
    }
}

void WriteReferenceShipments() {
    Write("reference", "shipment", kShipment);
}

void WriteShipments() {
    for (const auto& [name, content] : samples::Shipments()) Write("shipment", name, content);
}

/// Each file of the sample set and of its folder alone, since the whole would be too long.
void WriteTariffTexts() {
    samples::FileContents data = OwnTables();
    data.merge(samples::ProfileFiles());
    for (const auto& [name, content] : data) {
        Write("tariff_text", name, {{"data/" + name, content}});
    }
    for (const auto& [name, text] : samples::SampleFolder("tariff")) {
        if (name.find('/') == name.npos) Write("tariff_text", name, {{"text/" + name, text}});
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_seeds DIRECTORY\n");
        return 2;
    }
    directory = argv[1];
    WriteSets();
    WriteEngineAnswers();
    WriteGuideAnswers();
    WriteUserFiles();
    WriteRecords();
    WriteReferenceShipments();
    WriteShipments();
    WriteTariffTexts();
}
