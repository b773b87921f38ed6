#include "session/set_files.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <system_error>

namespace cwt {
namespace {

bool Always(const RateContext&) {
    return true;
}
bool Never(const RateContext&) {
    return false;
}
bool OwnTables(const RateContext& c) {
    return c.UseEngine == 0;
}
bool Items(const RateContext& c) {
    return c.AccFileFlag == 'Y';
}
bool ZipTables(const RateContext& c) {
    return c.SkipZipTablesFlag != 'Y';
}
bool OwnZipTables(const RateContext& c) {
    return OwnTables(c) && ZipTables(c);
}
bool OwnBaseTables(const RateContext& c) {
    return OwnTables(c) && c.NoBaseTablesFlag != 'Y';
}
bool OwnBaseRates(const RateContext& c) {
    return OwnBaseTables(c) && c.NoBseFlag == 'N';
}
bool OwnSecondMinimums(const RateContext& c) {
    return OwnBaseTables(c) && c.McaFileFlag == 'Y';
}
bool OwnMexico(const RateContext& c) {
    return OwnTables(c) && c.MexicoFilesLoaded != 0;
}
bool OwnMexicoZips(const RateContext& c) {
    return OwnMexico(c) && c.Zp7FileFlag != 'N';
}
bool OwnTexts(const RateContext& c) {
    return OwnTables(c) && c.LabFilesFlag == 'Y';
}

struct FileFacts {
    const char* extension;
    int record_size;
    bool (*required)(const RateContext&);
    std::vector<int32_t> codes;
    Need otherwise = Need::kNotRead;  ///< When it is not required.
    const char* fallback = nullptr;   ///< Serves when the first is missing.
    int fallback_record_size = 0;
};

using enum Need;

// In the order of a load; what it never looks for comes last.
const FileFacts kFiles[] = {
    {"SET", 283, Always, {370, 374}},
    {"MEF", 350, Never, {}, kOptional},
    {"MET", 283, Never, {}, kOptional},
    {"ACC", 123, Items, {490, 494}},
    {"SCC", 8, ZipTables, {460, 464}, kOptional},
    {"SC", 3996, Never, {360, 364}, kOptional},
    {"ZP6", 12, ZipTables, {436, 168, 438}},
    {"WGT", 21, OwnTables, {380, 384, 385}, kOptional},
    {"MCH", 0, OwnTables, {182, 193, 324}},
    {"CLS", 5, OwnTables, {230, 235}},
    {"ZFM", 0, OwnMexico, {456, 457}},
    {"ZP7", 43, OwnMexicoZips, {582, 583, 584}},
    {"ZF2", 0, OwnZipTables, {410, 414}},
    {"RTC", 0, OwnZipTables, {350}, kNotRead, "RCL"},
    {"BSC", 96, OwnZipTables, {480, 484}},
    {"FAC", 802, OwnBaseTables, {260, 264}},
    {"FCC", 1352, OwnZipTables, {260, 264}},
    {"BSE", 0, OwnBaseRates, {220, 224}},
    {"ZF1", 0, OwnBaseTables, {390, 394}},
    {"LA", 8, OwnBaseTables, {270, 272, 274}},
    {"RBA", 16, OwnBaseTables, {340, 342, 344}},
    {"LMC", 12, OwnBaseTables, {181, 312, 314}, kNotRead, "MC", 10},
    {"LCA", 12, OwnSecondMinimums, {183, 362, 534}, kNotRead, "MCA", 10},
    {"LAB", 0, OwnTexts, {280, 284}},
    {"LAM", 0, OwnTexts, {290}},
    {"ADJ", 347, OwnTexts, {210, 214}},
    {"TBL", 18, OwnTables, {450}},
    {"RTE", 0, OwnTables, {350}, kNotRead, "RTL"},
    {"BSV", 75, Never, {225}, kOptional},
    {"TRM", 0, Never, {}, kOptional},
    {"SRV", 0, Never, {}, kOptional},
    {"ZPS", 628, Never, {444}, kOptional},
    {"ZMC", 41, Never, {}, kOptional},
    {"CBS", 18, Never, {}, kOptional},
    {"CMT", 20, Never, {}, kOptional},
    {"SZP", 5, Never, {}, kOptional},
    {"WSM", 0, Never, {}, kOptional},
    {"DCH", 25, Always, {267, 268, 269}},
    {"DEF", 348, Never, {240, 244}, kOptional},
    {"DIS", 605, Never, {250, 254}, kOptional},
    {"COZ", 6, Never, {150, 151}, kOptional},
    {"LVL", 18, Always, {300, 302, 304}, kOptional},
};

/// Of the others, a record alone is read, and what is behind it is the host's.
bool IsTable(std::string_view extension) {
    constexpr std::string_view kTables[] = {"ACC", "SCC", "ZP6", "WGT", "CLS", "ZP7", "LA",
                                            "RBA", "LMC", "LCA", "ADJ", "TBL", "ZMC", "CBS",
                                            "CMT", "SZP", "DCH", "COZ", "LVL"};
    return std::ranges::find(kTables, extension) != std::end(kTables);
}

void Find(const Listing& directory, const std::string& name, SetFile& file) {
    file.path = directory.Find(name);
    std::error_code error;
    if (is_regular_file(file.path, error)) file.size = file_size(file.path, error);
}

/// Whether a load can have failed at a file that lies on disk as it does.
bool IsSuspect(const SetFile& file) {
    return !file.size || *file.size < static_cast<std::uintmax_t>(file.record_size);
}

}  // namespace

std::vector<SetFile> ListSetFiles(const Listing& directory, const std::string& set,
                                  const RateContext& context) {
    std::vector<SetFile> files;
    for (const FileFacts& facts : kFiles) {
        SetFile file = {.extension = facts.extension,
                        .need = facts.required(context) ? kRequired : facts.otherwise,
                        .record_size = facts.record_size,
                        .is_table = IsTable(facts.extension)};
        Find(directory, set + "." + facts.extension, file);
        if (file.path.empty() && facts.fallback != nullptr) {
            Find(directory, set + "." + facts.fallback, file);
            if (!file.path.empty()) {
                file.extension = facts.fallback;
                file.record_size = facts.fallback_record_size;
            }
        }
        files.push_back(file);
    }
    return files;
}

std::string FileOfCode(int32_t code, const std::vector<SetFile>& files) {
    std::string found;
    for (std::size_t i = 0; i < std::size(kFiles); ++i) {
        const std::vector<int32_t>& codes = kFiles[i].codes;
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) continue;
        if (found.empty() || IsSuspect(files[i])) found = files[i].extension;
        if (IsSuspect(files[i])) break;
    }
    return found;
}

}  // namespace cwt
