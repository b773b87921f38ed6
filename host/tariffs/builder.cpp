#include <algorithm>
#include <optional>

#include "tariffs/checks/set_checks.h"
#include "tariffs/file_names.h"
#include "tariffs/folder.h"
#include "tariffs/odd_files.h"
#include "tariffs/partners/partner_files.h"
#include "tariffs/record_text.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

std::optional<std::string> ReadFile(const Family& family, const std::string& sheet,
                                    FolderReader& folder) {
    switch (family.shape) {
        case Shape::kSettings:
        case Shape::kArray:
        case Shape::kTable:
            return ReadRecords(family, sheet, folder);
        case Shape::kIndexed:
            return ReadIndex(family, folder);
        case Shape::kLines:
            return ReadLines(family, folder);
        case Shape::kCarried:
            break;
    }
    return std::nullopt;
}

class Builder {
 public:
    explicit Builder(const Files& folder) : files_(folder), folder_(folder, result_.findings) {}

    Translation Run() {
        result_.set = folder_.set();
        if (result_.findings.Has(Finding::kError) ||
            !CheckSetName(result_.set, folder_.settings().set_place(), result_.findings)) {
            return std::move(result_);
        }
        for (const Family& family : Families()) {
            Read(family, FileNameOf(family, folder_.set()), family.text, family.extension);
        }
        for (const Family* family : {&kZipTable, &kOptionFile, &kEarlierOptionFile}) {
            ReadNamed(*family);
        }
        ReadPartnerFiles(folder_, result_.files);
        folder_.TellUnused();
        // Of a text that was not read whole, more would be doubted than it says.
        if (!result_.findings.Has(Finding::kError)) CheckSet(result_.files, folder_);
        return std::move(result_);
    }

 private:
    void Read(const Family& family, const std::string& name, const std::string& sheet,
              const std::string& carried) {
        const auto records = ReadFile(family, sheet, folder_);
        const auto rest = folder_.Carried(carried);
        if (!records && !rest) return;
        result_.files[name] = records.value_or("") + rest.value_or("");
    }

    /// The files of a family whose sheets bear their names.
    void ReadNamed(const Family& family) {
        const std::string_view folder = family.text;
        for (const auto& [sheet, text] : files_) {
            if (!sheet.starts_with(folder) || !sheet.ends_with(kSheetEnd)) continue;
            std::string name =
                sheet.substr(folder.size(), sheet.size() - folder.size() - kSheetEnd.size());
            if (&family == &kZipTable) name += kZipTableEnd;
            if (const std::string problem = NameProblem(name, folder_.set()); !problem.empty()) {
                result_.findings.Refuse({sheet}, problem);
                continue;
            }
            if (result_.files.contains(name)) {
                result_.findings.Refuse({sheet}, "another sheet gives the file " + name);
            }
            if (&family == &kZipTable && !HasProfile(name)) {
                result_.findings.Warn({sheet},
                                      "no profile of the folder has this name: an export leaves "
                                      "the table out");
            }
            Read(family, name, sheet, name);
        }
    }

    /// Whether a profile has this ZIP table.
    bool HasProfile(const std::string& table) const {
        const auto profiles = result_.files.find("PROFILE.FIL");
        if (profiles == result_.files.end()) return false;
        const std::vector<std::string> tables = ZipTablesOf(profiles->second);
        return std::ranges::find(tables, table) != tables.end();
    }

    const Files& files_;
    Translation result_;
    FolderReader folder_;
};

}  // namespace

Translation BuildSet(const Files& folder) {
    return Builder(folder).Run();
}

}  // namespace cwt
