#include "tariffs/difference/difference_side.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <set>

#include "tariffs/carried_text.h"
#include "tariffs/families/family.h"
#include "tariffs/folder.h"
#include "tariffs/translation.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

std::string TextOfValue(const Json& value) {
    if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
    return value.is_string() ? value.get<std::string>() : value.dump();
}

/// Makes sheets of one row of the settings' sections.
void SplitSettings(Files& sheets) {
    const Json settings = Json::parse(sheets.extract(kSettingsFile).mapped());
    for (const auto& [section, values] : settings.items()) {
        if (!values.is_object()) continue;
        SheetWriter sheet(sheets[kSectionMark + section]);
        for (const auto& [key, value] : values.items()) sheet.Cell(key);
        sheet.EndRow();
        for (const auto& [key, value] : values.items()) sheet.Cell(TextOfValue(value));
        sheet.EndRow();
    }
}

/// Makes one row of the bytes of each carried file.
void JoinCarried(Files& sheets) {
    const auto found = sheets.find(kCarriedFile);
    if (found == sheets.end()) return;
    Findings none;
    SheetReader rows(kCarriedFile, found->second,
                     {{"file", true}, {"times", false}, {"bytes", false}}, none);
    std::set<std::string> names;
    while (rows.Next()) names.emplace(rows.cell(0));
    FolderReader folder(sheets, none);
    std::string joined = "file,bytes\n";
    SheetWriter sheet(joined);
    for (const std::string& name : names) {
        sheet.Cell(name);
        sheet.Cell(CarriedText(folder.Carried(name).value_or("")));
        sheet.EndRow();
    }
    found->second = std::move(joined);
}

/// The names of a table's records, by their numbers.
std::vector<std::string> NamesOfRecords(const Family& family, std::string_view sheet) {
    Findings none;
    SheetReader rows(family.text, sheet, {{family.fields[0].name, true}}, none);
    std::vector<std::string> names;
    while (rows.Next()) names.emplace_back(rows.cell(0));
    return names;
}

/// Puts the names of records in the place of their numbers, and blanks the numbers of entries that
/// do no more than count: they differ where an entry is put in before them.
std::string WithNames(const Inner& inner, const std::vector<std::string>& names,
                      std::string_view text) {
    std::vector<SheetReader::Wanted> wanted = {{"record", true}, {inner.number, true}};
    for (const Column& column : ColumnsOf(inner.fields)) wanted.push_back({column.name, false});
    Findings none;
    SheetReader rows(inner.sheet, text, wanted, none);
    std::string named;
    SheetWriter sheet(named);
    for (const auto& column : wanted) sheet.Cell(column.name);
    sheet.EndRow();
    std::string record;
    for (std::size_t entry = 1; rows.Next(); ++entry) {
        if (rows.cell(0) != record) entry = 1;
        record = rows.cell(0);
        const std::size_t number = std::stoul(record);
        sheet.Cell(number <= names.size() ? names[number - 1] : record);
        sheet.Cell(rows.cell(1) == fmt::to_string(entry) ? "" : rows.cell(1));
        for (std::size_t i = 2; i < wanted.size(); ++i) sheet.Cell(rows.cell(i));
        sheet.EndRow();
    }
    return named;
}

void NameRecords(Files& sheets) {
    for (const Family& family : Families()) {
        if (family.shape != Shape::kTable || family.inner.empty()) continue;
        const auto records = sheets.find(family.text);
        if (records == sheets.end()) continue;
        const std::vector<std::string> names = NamesOfRecords(family, records->second);
        for (const Inner& inner : family.inner) {
            const auto found = sheets.find(inner.sheet);
            if (found != sheets.end()) found->second = WithNames(inner, names, found->second);
        }
    }
}

void TakeSheets(Files texts, DifferenceSide& side) {
    side.sheets = std::move(texts);
    JoinCarried(side.sheets);
    SplitSettings(side.sheets);
    NameRecords(side.sheets);
}

void AddFindings(const std::string& path, const Findings& from, Findings& to) {
    for (const Finding& finding : from.list()) {
        Place place = finding.place;
        place.file = path + '/' + place.file;
        if (finding.level == Finding::kError) to.Refuse(place, finding.text);
        if (finding.level == Finding::kWarning) to.Warn(place, finding.text);
    }
}

/// The option files that a folder tells, by its sheets.
std::vector<std::string> OptionFiles(const Files& folder) {
    std::vector<std::string> names;
    for (const Family* family : {&kOptionFile, &kEarlierOptionFile}) {
        const std::string_view place = family->text;
        constexpr std::string_view kCsv = ".csv";
        for (const auto& [name, text] : folder) {
            if (!name.starts_with(place) || !name.ends_with(kCsv)) continue;
            names.push_back(name.substr(place.size(), name.size() - place.size() - kCsv.size()));
        }
    }
    return names;
}

}  // namespace

DifferenceSide SideOfFolder(const std::string& path, Files files, Findings& findings) {
    Translation built = BuildSet(files);
    AddFindings(path, built.findings, findings);
    DifferenceSide side{path, built.set, true, {}, {}};
    if (built.findings.Has(Finding::kError)) return side;
    Translation exported = ExportSet(built.files, built.set, OptionFiles(files));
    built.files.clear();
    for (auto& [name, text] : files) {
        if (!exported.files.contains(name)) side.others[name] = std::move(text);
    }
    files.clear();
    TakeSheets(std::move(exported.files), side);
    return side;
}

DifferenceSide SideOfDirectory(const std::string& path, const std::string& set, Files files,
                               const std::vector<std::string>& option_files, Findings& findings) {
    Translation exported = ExportSet(files, set, option_files);
    AddFindings(path, exported.findings, findings);
    DifferenceSide side{path, set, false, {}, {}};
    for (const std::string& name : exported.left_out) side.others.insert(files.extract(name));
    files.clear();
    TakeSheets(std::move(exported.files), side);
    return side;
}

}  // namespace cwt
