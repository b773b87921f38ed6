#include "session/set_files.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "tariffs/families/family.h"

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
    bool (*required)(const RateContext&);
    std::vector<int32_t> codes;
    Need otherwise = Need::kNotRead;  ///< When it is not required.
    const char* fallback = nullptr;   ///< Serves when the first is missing.
};

using enum Need;

// In the order of a load; what it never looks for comes last.
const FileFacts kFiles[] = {
    {"SET", Always, {370, 374}},
    {"MEF", Never, {}, kOptional},
    {"MET", Never, {}, kOptional},
    {"ACC", Items, {490, 494}},
    {"SCC", ZipTables, {460, 464}, kOptional},
    {"SC", Never, {360, 364}, kOptional},
    {"ZP6", ZipTables, {436, 168, 438}},
    {"WGT", OwnTables, {380, 384, 385}, kOptional},
    {"MCH", OwnTables, {182, 193, 324}},
    {"CLS", OwnTables, {230, 235}},
    {"ZFM", OwnMexico, {456, 457}},
    {"ZP7", OwnMexicoZips, {582, 583, 584}},
    {"ZF2", OwnZipTables, {410, 414}},
    {"RTC", OwnZipTables, {350}, kNotRead, "RCL"},
    {"BSC", OwnZipTables, {480, 484}},
    {"FAC", OwnBaseTables, {260, 264}},
    {"FCC", OwnZipTables, {260, 264}},
    {"BSE", OwnBaseRates, {220, 224}},
    {"ZF1", OwnBaseTables, {390, 394}},
    {"LA", OwnBaseTables, {270, 272, 274}},
    {"RBA", OwnBaseTables, {340, 342, 344}},
    {"LMC", OwnBaseTables, {181, 312, 314}, kNotRead, "MC"},
    {"LCA", OwnSecondMinimums, {183, 362, 534}, kNotRead, "MCA"},
    {"LAB", OwnTexts, {280, 284}},
    {"LAM", OwnTexts, {290}},
    {"ADJ", OwnTexts, {210, 214}},
    {"TBL", OwnTables, {450}},
    {"RTE", OwnTables, {350}, kNotRead, "RTL"},
    {"BSV", Never, {225}, kOptional},
    {"TRM", Never, {}, kOptional},
    {"SRV", Never, {}, kOptional},
    {"ZPS", Never, {444}, kOptional},
    {"ZMC", Never, {}, kOptional},
    {"CBS", Never, {}, kOptional},
    {"CMT", Never, {}, kOptional},
    {"SZP", Never, {}, kOptional},
    {"WSM", Never, {}, kOptional},
    {"DCH", Always, {267, 268, 269}},
    {"DEF", Never, {240, 244}, kOptional},
    {"DIS", Never, {250, 254}, kOptional},
    {"COZ", Never, {150, 151}, kOptional},
    {"LVL", Always, {300, 302, 304}, kOptional},
};

void Find(const Listing& directory, const std::string& name, SetFile& file) {
    file.path = directory.Find(name);
    std::error_code error;
    if (is_regular_file(file.path, error)) file.size = file_size(file.path, error);
}

/// Whether a load can have failed at a file that lies on disk as it does.
bool IsSuspect(const SetFile& file) {
    return !file.size || *file.size < file.record_size();
}

}  // namespace

bool SetFile::is_table() const {
    return family->shape == Shape::kTable;
}

std::size_t SetFile::record_size() const {
    const bool is_one_record =
        (family->shape == Shape::kSettings || family->shape == Shape::kArray) && !family->has_more;
    return is_one_record || is_table() ? family->record_size : 0;
}

void SetFile::RequireWhole() const {
    if (need == Need::kNotRead || !size || record_size() == 0) return;
    if (!is_table()) return RequireRecord(path, record_size());
    if (stray_bytes() != 0) RequireWholeRecords(path, record_size());
}

std::vector<SetFile> ListSetFiles(const Listing& directory, const std::string& set,
                                  const RateContext& context) {
    std::vector<SetFile> files;
    for (const FileFacts& facts : kFiles) {
        SetFile file = {.extension = facts.extension,
                        .need = facts.required(context) ? kRequired : facts.otherwise};
        Find(directory, set + "." + facts.extension, file);
        if (file.path.empty() && facts.fallback != nullptr) {
            Find(directory, set + "." + facts.fallback, file);
            if (!file.path.empty()) file.extension = facts.fallback;
        }
        file.family = FamilyOf(file.extension);
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
