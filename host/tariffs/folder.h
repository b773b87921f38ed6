// A tariff set as a folder of text, while it is written and while it is read.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "tariffs/families/family.h"
#include "tariffs/finding.h"
#include "tariffs/settings_document.h"
#include "tariffs/sheet.h"

namespace cwt {

/// Bytes of files that no other text tells, in the order of their files.
inline constexpr const char* kCarriedFile = "carried-bytes.csv";

/// What an export writes.
class FolderWriter {
 public:
    explicit FolderWriter(const std::string& set) : settings_(set) {}

    /// The text of a sheet, to append to. It is there from then on.
    std::string& Sheet(const std::string& name) { return files_[name]; }
    SettingsWriter& settings() { return settings_; }
    /// Keeps the last bytes of a file, of which there may be none.
    void Carry(std::string_view file, std::string_view bytes);
    /// All files, whole.
    Files Finish();

 private:
    Files files_;
    SettingsWriter settings_;
    std::string carried_;
};

/// What a build reads.
class FolderReader {
 public:
    /// Refuses a folder without settings.
    FolderReader(const Files& files, Findings& findings);

    const std::string& set() const { return settings_.set(); }
    SettingsDocument& settings() { return settings_; }
    Findings& findings() { return findings_; }
    /// The text of a sheet; nothing when the folder has none.
    std::optional<std::string_view> Sheet(const std::string& name);
    /// The carried bytes of a file; nothing when none are told of it.
    std::optional<std::string> Carried(const std::string& file);
    /// Warns of what nobody has asked for.
    void TellUnused() const;

 private:
    void ReadCarried();

    const Files& files_;
    Findings& findings_;
    SettingsDocument settings_;
    std::set<std::string> read_;
    struct CarriedFile {
        std::string bytes;
        Place place;
        bool is_read = false;
    };
    std::map<std::string, CarriedFile> carried_;
};

}  // namespace cwt
