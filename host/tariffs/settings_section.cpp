// Records as sections of the settings' document, and back.
#include <fmt/core.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tariffs/field_json.h"
#include "tariffs/settings_document.h"
#include "text/json_writer.h"
#include "text/nearest_word.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

}  // namespace

SettingsWriter::SettingsWriter(std::string set) : document_(std::make_unique<Json>()) {
    *document_ = {{"schema", kSettingsSchema}, {"set", std::move(set)}};
}

SettingsWriter::~SettingsWriter() = default;

void SettingsWriter::Add(const char* section, std::span<const Field> fields,
                         std::string_view record) {
    Json& values = (*document_)[section] = Json::object();
    for (const Column& column : ColumnsOf(fields)) {
        const std::string_view bytes = column.In(record);
        if (IsLeftOut(*column.field, bytes)) continue;
        values[column.name] = ValueOf(*column.field, bytes);
    }
}

std::string SettingsWriter::Text() const {
    return DocumentOf(*document_);
}

std::string RecordOfSection(const char* section, std::span<const Field> fields, std::size_t size,
                            char filling, SettingsDocument& document, Findings& findings) {
    std::string record(size, filling);
    std::map<std::string, Setting>& settings = *document.Section(section);
    std::vector<std::string> names;
    for (const Column& column : ColumnsOf(fields)) {
        names.push_back(column.name);
        const auto found = settings.find(column.name);
        if (found == settings.end()) {
            if (column.field->is_needed) {
                findings.Refuse(document.place_of(section),
                                fmt::format("{}: the key {} is missing", section, column.name));
            }
            record.replace(column.offset, column.field->width, BytesOfNothing(*column.field));
            continue;
        }
        FieldBytes given = BytesOfText(*column.field, found->second.text);
        const bool is_flag = column.field->kind == Kind::kFlag;
        if (found->second.form == Setting::kTruth && !is_flag) {
            given = {{}, "is written as true or false, and is neither"};
        } else if (found->second.form == Setting::kNumber && is_flag) {
            given = {{}, "is a number, where true or false is wanted"};
        }
        if (given.bytes) record.replace(column.offset, column.field->width, *given.bytes);
        if (given.problem.empty()) continue;
        const std::string text =
            fmt::format("{}.{} \"{}\" {}", section, column.name, found->second.text, given.problem);
        given.bytes ? findings.Warn(found->second.place, text)
                    : findings.Refuse(found->second.place, text);
    }
    const std::vector<std::string_view> known(names.begin(), names.end());
    for (const auto& [name, setting] : settings) {
        if (std::ranges::find(names, name) != names.end()) continue;
        const auto nearest = NearestWord(name, known);
        findings.Warn(setting.place,
                      fmt::format("{}: nobody reads a key \"{}\"{}", section, name,
                                  nearest.empty() ? "" : "; is " + nearest[0] + " meant?"));
    }
    return record;
}

}  // namespace cwt
