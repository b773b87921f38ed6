#include <fmt/core.h>

#include <algorithm>
#include <set>

#include "tariffs/file_names.h"
#include "tariffs/folder.h"
#include "tariffs/odd_files.h"
#include "tariffs/partners/partner_files.h"
#include "tariffs/record_text.h"
#include "tariffs/translation.h"
#include "text/letters.h"

namespace cwt {
namespace {

std::string_view WriteFile(const Family& family, const std::string& sheet, std::string_view bytes,
                           FolderWriter& folder) {
    switch (family.shape) {
        case Shape::kSettings:
        case Shape::kArray:
        case Shape::kTable:
            return WriteRecords(family, sheet, bytes, folder);
        case Shape::kIndexed:
            return WriteIndex(family, bytes, folder);
        case Shape::kLines:
            return WriteLines(family, bytes, folder);
        case Shape::kCarried:
            break;
    }
    return bytes;
}

/// Whether a file is told by the bytes that are carried alone.
bool IsWhollyCarried(const Family& family, std::string_view bytes, std::string_view rest) {
    return family.shape != Shape::kTable && family.shape != Shape::kLines &&
           rest.size() == bytes.size();
}

class Exporter {
 public:
    Exporter(const Files& data, const std::string& set) : data_(data), set_(set), folder_(set) {}

    Translation Run(const std::vector<std::string>& option_files) {
        if (!CheckSetName(set_, {set_ + ".SET"}, result_.findings)) return std::move(result_);
        for (const Family& family : Families()) {
            Write(family, FileNameOf(family, set_), family.text, family.extension);
        }
        WriteZipTables();
        for (const std::string& name : option_files) WriteOptions(name);
        WritePartnerFiles();
        TellOthers();
        result_.set = set_;
        result_.files = folder_.Finish();
        return std::move(result_);
    }

 private:
    /// A file of the data, by its name in any letters.
    const std::pair<const std::string, std::string>* Find(const std::string& name) {
        const auto same = [&](const auto& file) {
            return LowerCase(file.first) == LowerCase(name);
        };
        const auto exact = data_.find(name);
        const auto found = exact != data_.end() ? exact : std::ranges::find_if(data_, same);
        return found == data_.end() ? nullptr : &*found;
    }

    /// Writes a file, if it is there. `carried` is the name under which its other bytes are told.
    void Write(const Family& family, const std::string& name, const std::string& sheet,
               const std::string& carried) {
        const auto* const file = Find(name);
        if (file == nullptr || !written_.insert(file->first).second) return;
        if (file->first != name) {
            result_.findings.Note({file->first}, "a build writes it as " + name);
        }
        const std::string_view bytes = file->second;
        const std::string_view rest = WriteFile(family, sheet, bytes, folder_);
        const bool is_whole = IsWhollyCarried(family, bytes, rest);
        if (is_whole || !rest.empty()) folder_.Carry(carried, rest);
        if (family.shape == Shape::kCarried) return;
        if (is_whole) {
            result_.findings.Warn(
                {file->first}, fmt::format("ends, with {} bytes, within its record; they are in {}",
                                           bytes.size(), kCarriedFile));
        } else if (!rest.empty() && !family.has_more) {
            result_.findings.Note({file->first},
                                  fmt::format("has {} bytes behind its last record, which nobody "
                                              "reads; they are in {}",
                                              rest.size(), kCarriedFile));
        }
    }

    /// The ZIP tables that are named like profiles.
    void WriteZipTables() {
        const auto* const profiles = Find("PROFILE.FIL");
        if (profiles == nullptr) return;
        for (const std::string& file : ZipTablesOf(profiles->second)) {
            if (!data_.contains(file) || !NameProblem(file, set_).empty()) continue;
            const std::string name = file.substr(0, file.size() - kZipTableEnd.size());
            Write(kZipTable, file, ZipTableSheet(name), file);
        }
    }

    static std::string ZipTableSheet(const std::string& name) {
        return kZipTable.text + name + std::string(kSheetEnd);
    }

    void WriteOptions(const std::string& name) {
        const auto file = data_.find(name);
        if (file == data_.end()) {
            result_.findings.Refuse({name}, "there is no such option file");
            return;
        }
        if (const std::string problem = NameProblem(name, set_); !problem.empty()) {
            result_.findings.Refuse({name}, "is no option file: " + problem);
            return;
        }
        const Family& family = OptionFamily(file->second);
        Write(family, name, family.text + name + std::string(kSheetEnd), name);
    }

    /// The layouts are told apart as the library does it.
    static const Family& OptionFamily(std::string_view bytes) {
        constexpr std::string_view kCurrentMark("\1\0\0\0", 4);
        if (bytes.size() % kEarlierOptionFile.record_size != 0) return kOptionFile;
        bool is_current = !bytes.empty() && bytes.size() % kOptionFile.record_size == 0;
        for (; is_current && !bytes.empty(); bytes.remove_prefix(kOptionFile.record_size)) {
            is_current = bytes.starts_with(kCurrentMark);
        }
        return is_current ? kOptionFile : kEarlierOptionFile;
    }

    /// The partners open their files by these very names.
    void WritePartnerFiles() {
        PartnerExport partners(folder_, result_.findings);
        for (const PartnerTable& table : PartnerTables()) {
            const auto file = data_.find(table.file);
            if (file == data_.end()) continue;
            written_.insert(file->first);
            partners.Write(table, file->second);
        }
    }

    void TellOthers() {
        for (const auto& [name, bytes] : data_) {
            if (written_.contains(name)) continue;
            result_.findings.Note({name}, "is no file of " + set_ + ", and left out");
            result_.left_out.push_back(name);
        }
    }

    const Files& data_;
    const std::string& set_;
    FolderWriter folder_;
    std::set<std::string> written_;
    Translation result_;
};

}  // namespace

Translation ExportSet(const Files& data, const std::string& set,
                      const std::vector<std::string>& option_files) {
    return Exporter(data, set).Run(option_files);
}

}  // namespace cwt
