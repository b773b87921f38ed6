#include "tariffs/difference/subjects.h"

#include <algorithm>
#include <iterator>

#include "tariffs/families/family.h"
#include "tariffs/folder.h"

namespace cwt {
namespace {

struct SheetRule {
    std::string_view sheet;
    const char* row_name;
    Order order = Order::kCounts;
    const char* words = "";  ///< Where no family has them.
};

using enum Order;

// clang-format off
constexpr SheetRule kRules[] = {
    {"states.csv", "ZIP prefix {zip_prefix}", kFree},
    {"provinces.csv", "{state} {first}-{last}"},
    {"point-codes.csv", "{first}-{last}"},
    {"tariff-names.csv", "{origin_point_code} to {destination_point_code}"},
    {"minimums-by-zip.csv", "{direction} {first_low}-{first_high}, {second_low}-{second_high}, rate codes {rate_code_low}-{rate_code_high}", kFirstFits},
    {"classes.csv", "class {class}"},
    {"weight-breaks.csv", "break {label}"},
    {"accessorials.csv", "item {item_code}"},
    {"adjustments.csv", "adjustment {key}"},
    {"tables.csv", "table {name}"},
    {"lam.csv", "{key}"},
    {"level.csv", "record"},
    {"zip-index-1.csv", "{key}"},
    {"zip-index-2.csv", "{key}"},
    {"mexico-zip-index.csv", "{key}"},
    {"discount-weights.csv", "weight column {weight_column}", kFree, "weight columns of the set's discounts"},
    {"discount-groups.csv", "group {group}", kFree, "groups of the set's discounts"},
    {"profiles.csv", "{name}"},
    {"profile-zip-discounts.csv", "{record}: {origin_first}-{origin_last} to {destination_first}-{destination_last}", kFirstFits, "the profiles' discounts by postal codes"},
    {"options/", "{name}", kCounts, "option records"},
    {"options-earlier/", "{name}", kCounts, "option records, earlier layout"},
    {"zip-tables/", nullptr, kCounts, "a profile's own ZIP table"},
    {kCarriedFile, "{file}", kFree, "bytes that no other text tells"},
    {"engine/tariffs.csv", "{tariff}", kCounts, "the engine's tariffs"},
    {"engine/rates.csv", "{tariff} scale {scale} class {class}", kFree, "the engine's rates"},
    {"engine/lanes.csv", "{tariff} {origin_first}-{origin_last} to {destination_first}-{destination_last}", kFirstFits, "the engine's lanes"},
    {"engine/points.csv", "{postal_code} {city}", kCounts, "the engine's points"},
    {"engine/states.csv", "{first}-{last}", kFirstFits, "the engine's states"},
    {"service-guide/terminals.csv", "terminal {code}", kCounts, "the service guide's terminals"},
    {"service-guide/points.csv", "{first}-{last}", kCounts, "the service guide's areas"},
    {"service-guide/transit-days.csv", "{terminal} to {other_terminal}", kCounts, "the service guide's transit days"},
};
// clang-format on

/// The family that a sheet is of, or a section of settings; null when it is of none.
const Family* FamilyOfText(std::string_view text) {
    const auto found = std::ranges::find_if(
        Families(), [&](const Family& family) { return !text.empty() && family.text == text; });
    if (found != Families().end()) return &*found;
    const auto holding = std::ranges::find_if(Families(), [&](const Family& family) {
        return std::ranges::any_of(family.inner,
                                   [&](const Inner& inner) { return inner.sheet == text; });
    });
    return holding == Families().end() ? nullptr : &*holding;
}

/// Whether a name has a word among those that underscores set apart.
bool HasWord(std::string_view name, std::string_view word) {
    for (std::size_t at = name.find(word); at != name.npos; at = name.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || name[at - 1] == '_') && (end == name.size() || name[end] == '_'))
            return true;
    }
    return false;
}

bool HasAnyWord(std::string_view name, std::initializer_list<std::string_view> words) {
    return std::ranges::any_of(words, [&](std::string_view word) { return HasWord(name, word); });
}

}  // namespace

Subject SubjectOf(std::string_view sheet) {
    const auto* const rule = std::ranges::find_if(kRules, [&](const SheetRule& each) {
        return each.sheet.ends_with('/') ? sheet.starts_with(each.sheet) : sheet == each.sheet;
    });
    const Family* const family = FamilyOfText(sheet);
    Subject subject;
    if (rule != std::end(kRules)) {
        subject.words = rule->words;
        subject.row_name = rule->row_name;
        subject.order = rule->order;
    }
    if (family != nullptr && subject.words.empty()) subject.words = family->words;
    return subject;
}

ColumnMeasure MeasureOf(std::string_view column) {
    if (HasAnyWord(column, {"code", "date", "type", "kind"})) return ColumnMeasure::kNone;
    if (HasAnyWord(column, {"percent"})) return ColumnMeasure::kShare;
    return HasAnyWord(column, {"dollars", "pounds", "rate", "factor", "minimum", "arbitrary",
                               "amount", "charge", "days", "cents"})
               ? ColumnMeasure::kAmount
               : ColumnMeasure::kNone;
}

std::string_view ColumnGroup(std::string_view column) {
    const std::size_t end = column.find_last_not_of("0123456789");
    const bool is_numbered = end != column.npos && end > 0 && end + 1 < column.size();
    return is_numbered && column[end] == '_' ? column.substr(0, end) : column;
}

}  // namespace cwt
