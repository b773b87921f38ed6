#include "tariffs/difference/difference.h"

#include <algorithm>
#include <map>

#include "tariffs/difference/column_tally.h"
#include "tariffs/difference/row_matching.h"
#include "text/csv.h"

namespace cwt {
namespace {

/// A text that is there, and null where there is no such file.
const std::string* TextIn(const Files& files, const std::string& name) {
    const auto found = files.find(name);
    return found == files.end() ? nullptr : &found->second;
}

void Count(SheetDifference& sheet) {
    for (const RowDifference& row : sheet.rows) {
        sheet.changed += row.is_changed ? 1 : 0;
        sheet.added += row.old_number == 0 ? 1 : 0;
        sheet.gone += row.new_number == 0 ? 1 : 0;
        sheet.moved += row.is_moved ? 1 : 0;
    }
}

SheetDifference CompareSheets(const std::string& name, const std::string* of_old,
                              const std::string* of_new) {
    SheetDifference sheet;
    sheet.name = name;
    sheet.is_in_old = of_old != nullptr;
    sheet.is_in_new = of_new != nullptr;
    if (of_old != nullptr && of_new != nullptr && *of_old == *of_new) return sheet;
    const SheetRows old_rows(of_old == nullptr ? std::string_view() : *of_old);
    const SheetRows new_rows(of_new == nullptr ? std::string_view() : *of_new);
    const bool is_section = name.starts_with(kSectionMark);
    constexpr std::string_view kSection = kSectionMark;
    sheet.subject = SubjectOf(is_section ? std::string_view(name).substr(kSection.size()) : name);
    if (is_section) sheet.subject.row_name = "";
    sheet.old_rows = old_rows.rows.size();
    sheet.new_rows = new_rows.rows.size();
    sheet.columns = ComparedColumns(sheet.is_in_old ? old_rows.header : new_rows.header,
                                    sheet.is_in_new ? new_rows.header : old_rows.header);
    sheet.rows = MatchRows(sheet.subject, sheet.columns, old_rows, new_rows);
    Count(sheet);
    if (sheet.changed > 0) sheet.column_differences = TallyColumns(sheet);
    std::erase_if(sheet.rows, [](const RowDifference& row) {
        return !row.is_changed && !row.is_moved && row.old_number != 0 && row.new_number != 0;
    });
    sheet.rows.shrink_to_fit();
    return sheet;
}

/// The names of either, in their order.
std::vector<std::string> NamesOf(const Files& a, const Files& b) {
    std::vector<std::string> names;
    for (const auto& [name, text] : a) names.push_back(name);
    for (const auto& [name, text] : b) {
        if (!a.contains(name)) names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

void CompareOthers(Difference& difference) {
    const Files &of_old = difference.of_old.others, &of_new = difference.of_new.others;
    for (const std::string& name : NamesOf(of_old, of_new)) {
        if (difference.of_old.is_folder != difference.of_new.is_folder) {
            difference.not_compared.push_back(name);
            continue;
        }
        const std::string* const old_text = TextIn(of_old, name);
        const std::string* const new_text = TextIn(of_new, name);
        if (old_text != nullptr && new_text != nullptr && *old_text == *new_text) continue;
        if (difference.of_new.is_folder && name.ends_with(".csv")) {
            SheetDifference sheet = CompareSheets(name, old_text, new_text);
            sheet.is_read = false;
            if (!sheet.is_alike()) difference.sheets.push_back(std::move(sheet));
            continue;
        }
        FileDifference file = {name, std::nullopt, std::nullopt};
        if (old_text != nullptr) file.old_size = old_text->size();
        if (new_text != nullptr) file.new_size = new_text->size();
        difference.files.push_back(std::move(file));
    }
}

}  // namespace

bool SheetDifference::is_alike() const {
    return is_in_old && is_in_new && rows.empty() &&
           std::ranges::all_of(columns, [](const ComparedColumn& column) {
               return column.in_old != std::string::npos && column.in_new != std::string::npos;
           });
}

Difference DifferenceOf(DifferenceSide of_old, DifferenceSide of_new) {
    Difference difference;
    difference.of_old = std::move(of_old);
    difference.of_new = std::move(of_new);
    const Files &old_sheets = difference.of_old.sheets, &new_sheets = difference.of_new.sheets;
    std::vector<std::string> names = NamesOf(old_sheets, new_sheets);
    std::stable_partition(names.begin(), names.end(),
                          [](const std::string& name) { return name.starts_with(kSectionMark); });
    for (const std::string& name : names) {
        SheetDifference sheet =
            CompareSheets(name, TextIn(old_sheets, name), TextIn(new_sheets, name));
        if (!sheet.is_alike()) difference.sheets.push_back(std::move(sheet));
    }
    CompareOthers(difference);
    return difference;
}

std::vector<std::string> CellsOf(std::string_view row) {
    std::vector<std::string> cells;
    if (!SplitCsvRow(row, cells).empty()) cells.assign(1, std::string(row));
    return cells;
}

std::vector<CellDifference> CellDifferences(const SheetDifference& sheet,
                                            const RowDifference& row) {
    const auto cells_of = [](std::string_view text) {
        return text.empty() ? std::vector<std::string>() : CellsOf(text);
    };
    const std::vector<std::string> old_cells = cells_of(row.of_old),
                                   new_cells = cells_of(row.of_new);
    const auto at = [](const std::vector<std::string>& cells, std::size_t index) {
        return index < cells.size() ? cells[index] : std::string();
    };
    std::vector<CellDifference> differences;
    for (const ComparedColumn& column : sheet.columns) {
        CellDifference cell = {column.name, at(old_cells, column.in_old),
                               at(new_cells, column.in_new)};
        if (cell.of_old != cell.of_new) differences.push_back(std::move(cell));
    }
    return differences;
}

std::string RowName(const SheetDifference& sheet, const RowDifference& row) {
    const bool in_new = row.new_number != 0;
    const std::vector<std::string> cells = CellsOf(in_new ? row.of_new : row.of_old);
    const auto cell = [&](std::string_view name) {
        const auto column = std::ranges::find(sheet.columns, name, &ComparedColumn::name);
        if (column == sheet.columns.end()) return std::string();
        const std::size_t index = in_new ? column->in_new : column->in_old;
        return index < cells.size() ? cells[index] : std::string();
    };
    std::string_view rest = sheet.subject.row_name == nullptr ? "" : sheet.subject.row_name;
    std::string name;
    while (!rest.empty()) {
        const std::size_t open = std::min(rest.find('{'), rest.size());
        std::string_view words = rest.substr(0, open);
        // Of a range, what is left out has no dash.
        if (words == "-" && (name.empty() || name.back() == ' ')) words = "";
        name += words;
        rest.remove_prefix(open);
        if (rest.empty()) break;
        const std::size_t close = std::min(rest.find('}'), rest.size() - 1);
        const std::string text = cell(rest.substr(1, close - 1));
        if (text.empty() && name.ends_with('-')) name.pop_back();
        name += text;
        rest.remove_prefix(close + 1);
    }
    return name.substr(std::min(name.find_first_not_of(' '), name.size()));
}

}  // namespace cwt
