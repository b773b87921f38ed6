// Profiles: their names, class maps and ZIP tables.
#include <map>
#include <set>

#include "tariffs/checks/field_values.h"
#include "tariffs/checks/freight_classes.h"
#include "tariffs/checks/set_checks.h"

namespace cwt {
namespace {

/// The text up to its end, which is compared letter for letter.
std::string_view WithoutEnd(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

bool IsOn(const Table& profiles, std::size_t row, const char* name) {
    const std::string_view bytes = profiles.bytes(row, profiles.column(name));
    return bytes.find_first_not_of('\0') != bytes.npos;
}

void CheckNames(CheckedSet& set) {
    const Table profiles = set.TableOf("PROFILE.FIL");
    const Column& column = profiles.column("name");
    std::map<std::string_view, std::size_t> rows;
    for (std::size_t row = 0; row < profiles.size(); ++row) {
        const std::string_view name = profiles.bytes(row, column);
        const std::string_view text = WithoutEnd(name);
        const auto [first, is_new] = rows.emplace(text, row);
        if (text.empty()) {
            set.Doubt(profiles, row, column, "names no profile: nobody can choose it");
        } else if (text.size() == name.size()) {
            set.Doubt(profiles, row, column,
                      "has {} characters: behind the last must be room for the end, or cwt cannot "
                      "choose the profile",
                      text.size());
        } else if (text.front() == ' ' || text.back() == ' ') {
            set.Doubt(profiles, row, column,
                      "begins or ends with a blank, and is found by nobody who leaves it out");
        } else if (!is_new) {
            set.DoubtAgainst(profiles, row, column, first->second,
                             "is the name of two profiles, and the first is always found");
        }
    }
}

/// A class that is mapped to one that the tariff has not is refused.
void CheckClassMaps(CheckedSet& set) {
    const Table profiles = set.TableOf("PROFILE.FIL");
    const Table classes = set.TableOf("CLS");
    std::set<std::string_view> known;
    for (std::size_t row = 0; row < classes.size(); ++row) {
        known.insert(Trimmed(classes.bytes(row, classes.column("class"))));
    }
    // Without classes of its own a set has the engine's or the standard ones.
    const bool has_classes = !known.empty();
    if (!has_classes) known.insert(std::begin(kFreightClasses), std::end(kFreightClasses));
    for (std::size_t row = 0; row < profiles.size(); ++row) {
        if (!IsOn(profiles, row, "class_map")) continue;
        std::size_t number = 0;
        for (const Column& column : profiles.columns) {
            if (std::string_view(column.field->name) != "class" || ++number > known.size()) {
                continue;
            }
            if (known.contains(WithoutEnd(profiles.bytes(row, column)))) continue;
            set.Doubt(profiles, row, column,
                      "is no class of {}: freight of the class that it is mapped from is refused",
                      has_classes ? "classes.csv" : "the standard tariffs");
        }
    }
}

/// A profile with discounts by postal codes has a ZIP table that bears its name.
void CheckZipTables(CheckedSet& set) {
    const Table profiles = set.TableOf("PROFILE.FIL");
    const Table settings = set.TableOf("SET");
    const bool has_provinces = set.TableOf("SCC").size() > 0;
    const bool skips = settings.size() > 0 && !has_provinces &&
                       settings.bytes(0, settings.column("skip_zip_tables")) == "Y";
    if (skips) return;
    const Column& name = profiles.column("name");
    for (std::size_t row = 0; row < profiles.size(); ++row) {
        if (!IsOn(profiles, row, "zip_discounts")) continue;
        const std::string text(WithoutEnd(profiles.bytes(row, name)));
        if (set.HasFile(text + ".ZP6")) continue;
        set.Doubt(profiles, row, profiles.column("zip_discounts"),
                  "asks for the profile's own ZIP table, and there is no zip-tables/{}.csv: the "
                  "set's serves",
                  text);
    }
}

/// Discounts that are written and switched off.
void CheckSwitches(CheckedSet& set) {
    const Table profiles = set.TableOf("PROFILE.FIL");
    for (std::size_t row = 0; row < profiles.size(); ++row) {
        if (IsOn(profiles, row, "zip_discount_count") && !IsOn(profiles, row, "zip_discounts")) {
            set.Doubt(profiles, row, profiles.column("zip_discounts"),
                      "switches the profile's discounts by postal codes off: none of them holds");
        }
        if (IsOn(profiles, row, "discount_file")) continue;
        for (const Column& column : profiles.columns) {
            if (!column.name.starts_with("group_") || !IsOn(profiles, row, column.name.c_str())) {
                continue;
            }
            set.Doubt(profiles, row, column, "never holds: discount_file is 0");
            break;
        }
    }
}

constexpr SetCheck kProfileCheckList[] = {CheckNames, CheckClassMaps, CheckZipTables,
                                          CheckSwitches};

}  // namespace

constinit const std::span<const SetCheck> kProfileChecks(kProfileCheckList);

}  // namespace cwt
