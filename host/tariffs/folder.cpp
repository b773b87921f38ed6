#include "tariffs/folder.h"

#include <fmt/core.h>

namespace cwt {
namespace {

constexpr std::size_t kBytesOfRow = 64;

}  // namespace

void FolderWriter::Carry(std::string_view file, std::string_view bytes) {
    SheetWriter sheet(carried_);
    do {
        sheet.Cell(file);
        sheet.Cell(CarriedText(bytes.substr(0, kBytesOfRow)));
        sheet.EndRow();
        bytes.remove_prefix(std::min(bytes.size(), kBytesOfRow));
    } while (!bytes.empty());
}

Files FolderWriter::Finish() {
    files_[kSettingsFile] = settings_.Text();
    if (!carried_.empty()) files_[kCarriedFile] = "file,bytes\n" + carried_;
    return std::move(files_);
}

FolderReader::FolderReader(const Files& files, Findings& findings)
    : files_(files), findings_(findings) {
    const auto settings = Sheet(kSettingsFile);
    if (!settings) {
        findings.Refuse({kSettingsFile}, "is missing: it names the set");
        return;
    }
    settings_ = SettingsDocument(*settings, findings);
    ReadCarried();
}

std::optional<std::string_view> FolderReader::Sheet(const std::string& name) {
    const auto found = files_.find(name);
    if (found == files_.end()) return std::nullopt;
    read_.insert(name);
    return found->second;
}

void FolderReader::ReadCarried() {
    const auto text = Sheet(kCarriedFile);
    if (!text) return;
    SheetReader sheet(kCarriedFile, *text, {{"file", true}, {"bytes", true}}, findings_);
    while (sheet.Next()) {
        const auto bytes = CarriedBytes(sheet.cell(1));
        if (!bytes) {
            sheet.Refuse(1, "is neither a text of Windows-1252 nor hexadecimal digits behind hex:");
            continue;
        }
        const auto [file, is_new] = carried_.try_emplace(std::string(sheet.cell(0)));
        if (is_new) file->second.place = sheet.place(0);
        file->second.bytes += *bytes;
    }
}

std::optional<std::string> FolderReader::Carried(const std::string& file) {
    const auto found = carried_.find(file);
    if (found == carried_.end()) return std::nullopt;
    found->second.is_read = true;
    return found->second.bytes;
}

void FolderReader::TellUnused() const {
    settings_.TellUnused(findings_);
    for (const auto& [name, text] : files_) {
        if (!read_.contains(name)) findings_.Warn({name}, "nobody reads this file");
    }
    for (const auto& [name, file] : carried_) {
        if (!file.is_read) findings_.Warn(file.place, fmt::format("a set has no file {}", name));
    }
}

}  // namespace cwt
