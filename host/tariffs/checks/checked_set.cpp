#include "tariffs/checks/checked_set.h"

#include <algorithm>
#include <charconv>

#include "tariffs/record_text.h"

namespace cwt {
namespace {

constexpr std::size_t kToldOfAKind = 5;

std::string SheetOf(const Table& table) {
    return table.inner != nullptr ? table.inner->sheet : table.family.text;
}

std::size_t NumberIn(std::string_view cell) {
    std::size_t number = 0;
    std::from_chars(cell.data(), cell.data() + cell.size(), number);
    return number;
}

}  // namespace

Table::Table(const Family& its_family, std::string_view bytes)
    : family(its_family), columns(ColumnsOf(its_family.fields)), bytes_(bytes) {}

Table::Table(const Family& its_family, std::string_view bytes, const Inner& array)
    : family(its_family), inner(&array), columns(ColumnsOf(array.fields)), bytes_(bytes) {}

std::size_t Table::size() const {
    const std::size_t records = bytes_.size() / family.record_size;
    const std::size_t taken = family.most > 0 ? std::min(records, family.most) : records;
    const bool is_single = family.shape != Shape::kTable;
    return (is_single ? std::min<std::size_t>(taken, 1) : taken) *
           (inner != nullptr ? inner->count : 1);
}

std::string_view Table::row(std::size_t index) const {
    if (inner == nullptr) return bytes_.substr(index * family.record_size, family.record_size);
    return bytes_.substr(index / inner->count * family.record_size + inner->offset +
                             index % inner->count * inner->stride,
                         inner->stride);
}

const Column& Table::column(std::string_view name) const {
    return *std::ranges::find(columns, name, &Column::name);
}

std::string CheckedSet::FileOf(std::string_view extension) const {
    return extension.find('.') != extension.npos ? std::string(extension)
                                                 : fmt::format("{}.{}", folder_.set(), extension);
}

Table CheckedSet::TableOf(std::string_view extension) const {
    const auto file = built_.find(FileOf(extension));
    return {*FamilyOf(extension), file == built_.end() ? std::string_view() : file->second};
}

Table CheckedSet::TableOf(std::string_view extension, std::string_view sheet) const {
    const auto file = built_.find(FileOf(extension));
    const Family& family = *FamilyOf(extension);
    return {family, file == built_.end() ? std::string_view() : file->second,
            *std::ranges::find(family.inner, sheet, &Inner::sheet)};
}

void CheckedSet::Add(const Table& table, std::size_t row, const Column& column,
                     std::optional<std::size_t> other, fmt::string_view reason,
                     fmt::format_args args) {
    const std::string sheet = SheetOf(table);
    const std::string_view kind(reason.data(), reason.size());
    if (++counts_[{sheet, kind}] > kToldOfAKind) return;
    const bool is_setting = table.inner == nullptr && table.family.shape == Shape::kSettings;
    doubts_.push_back({sheet, kind, row, column.name, other,
                       ValueText(is_setting ? sheet + "." + column.name : column.name,
                                 FieldText(*column.field, table.bytes(row, column)),
                                 fmt::vformat(reason, args))});
    tables_.try_emplace(sheet, table);
}

void CheckedSet::Note(const Table& table, std::string text) {
    folder_.findings().Note({SheetOf(table)}, std::move(text));
}

void CheckedSet::FindSettingPlaces(const std::string& section) {
    const auto* const settings = folder_.settings().Section(section);
    for (OneDoubt& doubt : doubts_) {
        if (doubt.sheet != section) continue;
        doubt.place = folder_.settings().place_of(section);
        if (settings == nullptr) continue;
        const auto setting = settings->find(doubt.column);
        if (setting != settings->end()) doubt.place = setting->second.place;
    }
}

void CheckedSet::FindPlaces(const std::string& sheet, const Table& table) {
    std::multimap<std::size_t, OneDoubt*> by_row;
    std::multimap<std::size_t, OneDoubt*> by_other;
    for (OneDoubt& doubt : doubts_) {
        if (doubt.sheet != sheet) continue;
        doubt.place = {sheet};
        by_row.emplace(doubt.row, &doubt);
        if (doubt.other) by_other.emplace(*doubt.other, &doubt);
    }
    const auto text = folder_.Sheet(sheet);
    if (!text) return;
    // The columns of a sheet as they were read, and the numbers that an array's rows begin with.
    std::vector<SheetReader::Wanted> wanted = WantedColumns(table.columns);
    const bool has_records = table.inner != nullptr && table.family.shape == Shape::kTable;
    if (table.inner != nullptr) wanted.insert(wanted.begin(), {table.inner->number, true});
    if (has_records) wanted.insert(wanted.begin(), {kRecordColumn, true});
    const std::size_t first = (table.inner != nullptr ? 1U : 0U) + (has_records ? 1U : 0U);
    Findings told_before;
    SheetReader reader(sheet, *text, wanted, told_before);
    for (std::size_t count = 0; reader.Next(); ++count) {
        std::size_t row = count;
        if (table.inner != nullptr) {
            const std::size_t record = has_records ? NumberIn(reader.cell(0)) : 1;
            row = (record - 1) * table.inner->count + NumberIn(reader.cell(first - 1)) - 1;
        }
        for (auto [at, end] = by_row.equal_range(row); at != end; ++at) {
            const auto column = std::ranges::find(table.columns, at->second->column, &Column::name);
            at->second->place =
                reader.place(first + static_cast<std::size_t>(column - table.columns.begin()));
        }
        for (auto [at, end] = by_other.equal_range(row); at != end; ++at) {
            at->second->other_line = reader.place().line;
        }
    }
}

void CheckedSet::Tell() {
    for (const auto& [sheet, table] : tables_) {
        const bool is_section = table.inner == nullptr && table.family.shape == Shape::kSettings;
        is_section ? FindSettingPlaces(sheet) : FindPlaces(sheet, table);
    }
    std::map<std::pair<std::string, std::string_view>, std::size_t> told;
    for (OneDoubt& doubt : doubts_) {
        if (doubt.other_line > 0) doubt.text += fmt::format(" (line {})", doubt.other_line);
        const std::size_t count = counts_.at({doubt.sheet, doubt.kind});
        if (++told[{doubt.sheet, doubt.kind}] == kToldOfAKind && count > kToldOfAKind) {
            doubt.text += fmt::format("; and {} more like this", count - kToldOfAKind);
        }
        folder_.findings().Warn(doubt.place, doubt.text);
    }
}

}  // namespace cwt
