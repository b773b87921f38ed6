#include "tariffs/folder.h"

#include <fmt/core.h>

#include <algorithm>

#include "tariffs/carried_text.h"
#include "tariffs/file_names.h"
#include "text/nearest_word.h"

namespace cwt {
namespace {

constexpr std::size_t kBytesOfRow = 64;

/// What stands in a folder for people: pages, and shipments to try the tariff with.
bool IsForPeople(std::string_view name) {
    return name.ends_with(".md") || name.starts_with("shipments/");
}

/// The file that somebody most likely took for a missing one.
std::string SlipOf(const char* missing, const Files& files) {
    std::vector<std::string_view> others;
    for (const auto& [name, text] : files) {
        if (!IsTariffText(name)) others.push_back(name);
    }
    const auto nearest = NearestWord(missing, others);
    return nearest.empty() ? "" : "; is " + nearest[0] + " meant for it?";
}

}  // namespace

void FolderWriter::Carry(std::string_view file, std::string_view bytes) {
    SheetWriter sheet(carried_);
    do {
        const std::string_view row = bytes.substr(0, kBytesOfRow);
        std::size_t times = 0;
        do {
            bytes.remove_prefix(row.size());
            ++times;
        } while (!row.empty() && bytes.starts_with(row));
        sheet.Cell(file);
        sheet.Cell(fmt::format("{}", times));
        sheet.Cell(CarriedText(row));
        sheet.EndRow();
    } while (!bytes.empty());
}

Files FolderWriter::Finish() {
    files_[kSettingsFile] = settings_.Text();
    if (!carried_.empty()) files_[kCarriedFile] = "file,times,bytes\n" + carried_;
    return std::move(files_);
}

FolderReader::FolderReader(const Files& files, Findings& findings)
    : files_(files), findings_(findings) {
    const auto settings = Sheet(kSettingsFile);
    if (!settings) {
        findings.Refuse({kSettingsFile},
                        "is missing: it names the set" + SlipOf(kSettingsFile, files));
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
    // A few characters could tell more bytes than there is memory.
    constexpr std::size_t kMostBytes = std::size_t{1} << 28;
    std::size_t room = kMostBytes;
    SheetReader sheet(kCarriedFile, *text, {{"file", true}, {"times", true}, {"bytes", true}},
                      findings_);
    while (sheet.Next()) {
        const auto bytes = CarriedBytes(sheet.cell(2));
        const std::size_t times = sheet.Number(1, kMostBytes);
        if (!bytes) {
            sheet.Refuse(2, "is neither a text of Windows-1252 nor hexadecimal digits behind hex:");
            continue;
        }
        if (!bytes->empty() && times > room / bytes->size()) {
            sheet.Refuse(
                1, fmt::format("gives more than the {} bytes that all rows may give", kMostBytes));
            return;
        }
        room -= times * bytes->size();
        const auto [file, is_new] = carried_.try_emplace(std::string(sheet.cell(0)));
        if (is_new) file->second.place = sheet.place(0);
        if (bytes->empty()) continue;
        for (std::size_t i = 0; i < times; ++i) file->second.bytes += *bytes;
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
    const std::vector<std::string> names = FolderFileNames();
    std::vector<std::string_view> missing;
    for (const std::string& name : names) {
        if (!files_.contains(name)) missing.push_back(name);
    }
    for (const auto& [name, text] : files_) {
        if (read_.contains(name) || IsForPeople(name)) continue;
        std::string told = "nobody reads this file";
        if (std::ranges::find(names, name) != names.end()) {
            told += ": the sheet that its rows belong to is missing";
        } else if (const auto nearest = NearestWord(name, missing); !nearest.empty()) {
            told += "; is " + nearest[0] + " meant?";
        }
        findings_.Warn({name}, told);
    }
    for (const auto& [name, file] : carried_) {
        if (!file.is_read) findings_.Warn(file.place, fmt::format("a set has no file {}", name));
    }
}

}  // namespace cwt
