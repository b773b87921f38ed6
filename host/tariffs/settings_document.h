// settings.json: the records of a tariff set of which there is one each, and the set's name.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/families/family.h"
#include "tariffs/finding.h"
#include "tariffs/sheet.h"

namespace cwt {

inline constexpr const char* kSettingsFile = "settings.json";
/// What settings.json calls its schema.
inline constexpr std::string_view kSettingsSchema = "hundredweight/tariff-set/1";

/// A value of a section, with where it stands.
struct Setting {
    std::string text;
    Place place;
    enum Form { kText, kNumber, kTruth } form = kText;  ///< As it was written.
};

/// What settings.json says, as it was written.
class SettingsDocument {
 public:
    SettingsDocument() = default;
    /// What cannot be read, and what is no setting, is refused.
    SettingsDocument(std::string_view text, Findings& findings);

    const std::string& set() const { return set_; }
    const Place& set_place() const { return set_place_; }
    /// The section of a family; null when there is none.
    std::map<std::string, Setting>* Section(const std::string& name);
    Place place_of(const std::string& section) const;
    /// Warns of all sections and keys that nobody has asked for.
    void TellUnused(Findings& findings) const;

 private:
    friend class SettingsHandler;

    struct SectionEntry {
        Place place;
        std::map<std::string, Setting> settings;
    };
    std::string set_;
    Place set_place_;
    std::map<std::string, SectionEntry> sections_;
};

/// Writes the sections of a set. Each family's record is added in turn.
class SettingsWriter {
 public:
    explicit SettingsWriter(std::string set);
    ~SettingsWriter();
    SettingsWriter(const SettingsWriter&) = delete;
    SettingsWriter& operator=(const SettingsWriter&) = delete;

    void Add(const char* section, std::span<const Field> fields, std::string_view record);
    std::string Text() const;

 private:
    std::unique_ptr<nlohmann::ordered_json> document_;
};

/// The record that a section gives; fields that it leaves out are padding.
std::string RecordOfSection(const char* section, std::span<const Field> fields, std::size_t size,
                            char filling, SettingsDocument& document, Findings& findings);

}  // namespace cwt
