#include "tariffs/file_names.h"

#include <fmt/core.h>

#include <algorithm>

#include "tariffs/folder.h"
#include "tariffs/partners/partner_tables.h"
#include "text/letters.h"

namespace cwt {

std::string FileNameOf(const Family& family, const std::string& set) {
    const std::string_view extension = family.extension;
    return extension.find('.') == extension.npos ? fmt::format("{}.{}", set, extension)
                                                 : std::string(extension);
}

std::vector<std::string> FolderFileNames() {
    std::vector<std::string> names = {kSettingsFile, kCarriedFile};
    for (const Family& family : Families()) {
        if (std::string_view(family.text).ends_with(kSheetEnd)) names.emplace_back(family.text);
        for (const Inner& inner : family.inner) names.emplace_back(inner.sheet);
    }
    for (const PartnerTable& table : PartnerTables()) {
        names.push_back(table.SheetName());
        names.push_back(table.FileName());
    }
    return names;
}

bool IsTariffText(std::string_view name) {
    const std::vector<std::string> names = FolderFileNames();
    if (std::ranges::find(names, name) != names.end()) return true;
    return std::ranges::any_of(
        std::initializer_list<const Family*>{&kZipTable, &kOptionFile, &kEarlierOptionFile},
        [&](const Family* family) {
            return name.starts_with(family->text) && name.ends_with(kSheetEnd);
        });
}

bool CheckSetName(const std::string& set, const Place& place, Findings& findings) {
    constexpr std::size_t kLongest = 8;
    const bool is_name =
        !set.empty() && set.size() <= kLongest && std::ranges::all_of(set, [](char c) {
            return ('A' <= c && c <= 'Z') || ('a' <= c && c <= 'z') || ('0' <= c && c <= '9') ||
                   c == '-' || c == '_';
        });
    if (!is_name) {
        findings.Refuse(place, fmt::format("set \"{}\": a base name has 1 to {} letters, digits, - "
                                           "and _",
                                           set, kLongest));
    }
    return is_name;
}

std::string NameProblem(const std::string& name, const std::string& set) {
    if (name.starts_with('.') || name.find_first_of(std::string_view("/\\\0", 3)) != name.npos) {
        return "gives no name of a file in the directory";
    }
    const std::string lower = LowerCase(name);
    const bool is_taken = std::ranges::any_of(Families(), [&](const Family& family) {
        return lower == LowerCase(FileNameOf(family, set));
    });
    return is_taken ? name + " is a file of the set" : "";
}

std::vector<std::string> ZipTablesOf(std::string_view profiles) {
    const Family& family = *FamilyOf("PROFILE.FIL");
    std::vector<std::string> names;
    for (; profiles.size() >= family.record_size; profiles.remove_prefix(family.record_size)) {
        const std::string_view field = profiles.substr(0, family.fields[0].width);
        const std::string name(field.substr(0, field.find('\0')));
        if (!name.empty()) names.push_back(name + std::string(kZipTableEnd));
    }
    return names;
}

}  // namespace cwt
