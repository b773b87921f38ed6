#include "tariffs/partners/partner_files.h"

#include <fmt/core.h>

#include <algorithm>
#include <span>

#include "tariffs/families/family.h"
#include "tariffs/file_names.h"
#include "tariffs/partners/partner_cells.h"
#include "text/code_page.h"

namespace cwt {
namespace {

/// Longer lines, which no partner's data have, stay out of sheets.
constexpr std::size_t kLongestLine = 65'536;

/// Rows of a file as its partner reads them: blanks and comments do not count.
class LineReader {
 public:
    LineReader(const PartnerTable& table, std::string file, std::string_view bytes)
        : table_(table), file_(std::move(file)), rest_(bytes) {}

    /// Goes to the next line, which may hold no row.
    bool Next() {
        if (rest_.empty()) return false;
        line_ = rest_.substr(0, rest_.find('\n'));
        is_ended_ = line_.size() < rest_.size();
        rest_.remove_prefix(line_.size() + (is_ended_ ? 1 : 0));
        ++number_;
        const std::string_view row = line_.substr(0, line_.find('#'));
        has_row_ = !WordsOf(row).empty();
        if (has_row_) SplitPartnerLine(row, fields_);
        return true;
    }
    bool has_row() const { return has_row_; }
    const std::vector<std::string>& fields() const { return fields_; }
    std::size_t number() const { return number_; }

    /// Whether the line is the heading's of this number, with its end.
    bool IsHeading() const {
        std::string_view heading = table_.heading;
        for (std::size_t i = 1; i < number_; ++i) heading.remove_prefix(heading.find('\n') + 1);
        return is_ended_ && heading.substr(0, heading.find('\n')) == line_;
    }

    /// Adds the row to a sheet with so many rates. Result: whether the sheet gives its line back.
    bool Write(SheetWriter& sheet, std::size_t rates) const {
        if (!is_ended_ || line_.size() > kLongestLine) return false;
        std::vector<std::string> back;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const auto cells = CellsOf(table_.columns[i], fields_[i], rates);
            for (const std::string& cell : cells) sheet.Cell(cell);
            const std::vector<std::string_view> views(cells.begin(), cells.end());
            PartnerField field = FieldOf(table_.columns[i], views);
            if (!field.problem.empty()) return false;
            back.push_back(std::move(field.bytes));
        }
        sheet.EndRow();
        return PartnerLine(back) == line_;
    }

    PartnerChecks::Spot Locate(std::size_t field) const {
        std::size_t at = 0;
        for (std::size_t bars = field; bars > 0; --bars) at = line_.find('|', at) + 1;
        at = std::min(line_.find_first_not_of(" \t", at), line_.size());
        const std::string_view name = table_.columns[field].name;
        return {{file_, number_, at + 1},
                fmt::format("{} \"{}\"", name.empty() ? "prefixes" : name,
                            FromCodePage(fields_[field]))};
    }

 private:
    const PartnerTable& table_;
    std::string file_;
    std::string_view rest_, line_;
    std::vector<std::string> fields_;
    std::size_t number_ = 0;
    bool is_ended_ = false, has_row_ = false;
};

std::size_t HeadingLines(const PartnerTable& table) {
    return static_cast<std::size_t>(std::ranges::count(std::string_view(table.heading), '\n'));
}

/// The rates in the widest row of a file.
std::size_t MostRates(const PartnerTable& table, std::string_view bytes) {
    const auto column = std::ranges::find(table.columns, PartnerForm::kRates, &PartnerColumn::form);
    if (column == table.columns.end()) return 0;
    const auto index = static_cast<std::size_t>(column - table.columns.begin());
    std::size_t most = 1;
    LineReader lines(table, table.file, bytes);
    while (lines.Next()) {
        if (!lines.has_row() || lines.fields().size() <= index) continue;
        most = std::max(most, WordsOf(lines.fields()[index]).size());
    }
    return std::min(most, kMostTableEntries);
}

void WriteHeader(const PartnerTable& table, std::size_t rates, SheetWriter& sheet) {
    for (const auto& cell : WantedCells(table, rates)) sheet.Cell(cell.name);
    sheet.EndRow();
}

/// Checks a file that is in the folder as it is.
void CheckFile(const PartnerTable& table, std::string_view bytes, PartnerChecks& checks) {
    LineReader lines(table, table.FileName(), bytes);
    checks.Begin(table, table.FileName(), true,
                 [&](std::size_t field, std::size_t) { return lines.Locate(field); });
    while (lines.Next()) {
        if (lines.has_row()) checks.Check(lines.fields(), lines.number());
    }
    checks.End();
}

/// Makes fields of the cells of a row. Result: whether all could be.
bool ReadFields(const PartnerTable& table, const SheetReader& sheet, PartnerChecks& checks,
                std::vector<std::string>& fields) {
    std::vector<std::string_view> cells;
    std::size_t cell = 0;
    bool is_whole = true;
    fields.clear();
    for (const PartnerColumn& column : table.columns) {
        cells.clear();
        for (std::size_t i = CellCount(column); i > 0; --i) cells.push_back(sheet.cell(cell++));
        PartnerField field = FieldOf(column, cells);
        if (!field.problem.empty()) {
            checks.Refuse(fields.size(), field.cell, field.problem);
            is_whole = false;
        }
        fields.push_back(std::move(field.bytes));
    }
    return is_whole;
}

std::ptrdiff_t Errors(const Findings& findings) {
    return std::ranges::count(findings.list(), Finding::kError, &Finding::level);
}

std::string ReadSheet(const PartnerTable& table, std::string_view text, PartnerChecks& checks,
                      Findings& findings) {
    const std::ptrdiff_t errors = Errors(findings);
    SheetReader sheet(table.SheetName(), text, WantedCells(table), findings);
    checks.Begin(table, table.SheetName(), false, [&](std::size_t field, std::size_t cell) {
        std::size_t at = cell;
        for (std::size_t i = 0; i < field; ++i) at += CellCount(table.columns[i]);
        return PartnerChecks::Spot{sheet.place(at), sheet.Words(at)};
    });
    std::string file = table.heading;
    std::vector<std::string> fields;
    while (sheet.Next()) {
        if (!ReadFields(table, sheet, checks, fields)) continue;
        if (checks.Check(fields, sheet.place().line)) file += PartnerLine(fields) + '\n';
    }
    // A row that is not as wide as the header has been told by the sheet.
    if (Errors(findings) > errors) checks.Break();
    checks.End();
    return file;
}

}  // namespace

void PartnerExport::Write(const PartnerTable& table, std::string_view bytes) {
    std::string text;
    SheetWriter sheet(text);
    const std::size_t rates = MostRates(table, bytes);
    WriteHeader(table, rates, sheet);
    LineReader lines(table, table.file, bytes);
    const std::size_t first_finding = checked_.list().size();
    checks_.Begin(table, table.file, false,
                  [&](std::size_t field, std::size_t) { return lines.Locate(field); });
    const std::size_t heading = HeadingLines(table);
    std::size_t odd_line = 0;
    while (lines.Next()) {
        const bool is_heading = lines.number() <= heading && lines.IsHeading();
        if (lines.has_row()) checks_.Check(lines.fields(), lines.number());
        if (odd_line != 0 || is_heading) continue;
        const bool is_row = lines.number() > heading && lines.has_row() &&
                            lines.fields().size() == table.columns.size();
        if (!is_row || !lines.Write(sheet, rates)) odd_line = lines.number();
    }
    checks_.End();
    if (odd_line == 0 && lines.number() < heading) odd_line = lines.number() + 1;
    TellLetters(table, bytes);
    const auto told = std::span(checked_.list()).subspan(first_finding);
    const auto refused = std::ranges::find(told, Finding::kError, &Finding::level);
    if (odd_line == 0 && refused == told.end()) {
        folder_.Sheet(table.SheetName()) = std::move(text);
        return;
    }
    folder_.Sheet(table.FileName()) = bytes;
    const std::string where = "; the file goes into the folder as it is, " + table.FileName();
    if (refused != told.end()) {
        findings_.Warn(refused->place, refused->text + where);
    } else {
        findings_.Note({table.file, odd_line, 0},
                       "a sheet would not give this line back as it is" + where);
    }
}

void PartnerExport::TellLetters(const PartnerTable& table, std::string_view bytes) {
    const auto is_beyond = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    const auto letter = std::ranges::find_if(bytes, is_beyond);
    if (letter == bytes.end() || !IsUtf8(bytes)) return;
    const auto line = 1 + std::count(bytes.begin(), letter, '\n');
    findings_.Warn({table.file, static_cast<std::size_t>(line), 0},
                   "has letters in UTF-8; requests and bills have Windows-1252, where each is "
                   "several characters, and so they are in the sheet");
}

/// The day of a set's level file, YYYYMMDD; empty when it has none.
std::string LevelDay(const std::string& set, const Files& files) {
    const Family& family = *FamilyOf("LVL");
    const auto level = files.find(FileNameOf(family, set));
    if (level == files.end() || level->second.size() < family.record_size) return {};
    std::string day;
    for (const Column& column : ColumnsOf(family.fields)) {
        if (column.field->kind == Kind::kDate) day = column.In(level->second);
    }
    return day.find_first_not_of("0123456789") == day.npos ? day : "";
}

void ReadPartnerFiles(FolderReader& folder, Files& files) {
    Findings& findings = folder.findings();
    PartnerChecks checks(findings, LevelDay(folder.set(), files));
    for (const PartnerTable& table : PartnerTables()) {
        const auto sheet = folder.Sheet(table.SheetName());
        const auto file = folder.Sheet(table.FileName());
        if (sheet && file) {
            findings.Refuse({table.FileName()}, "is there beside " + table.SheetName() +
                                                    ": one of them tells the file, not both");
            checks.Skip(table);
        } else if (sheet) {
            files[table.file] = ReadSheet(table, *sheet, checks, findings);
        } else if (file) {
            files[table.file] = *file;
            CheckFile(table, *file, checks);
        }
    }
    checks.Finish();
    const auto names = files.find(folder.set() + ".CMT");
    if (names != files.end()) checks.CheckTariffNames(names->second, FamilyOf("CMT")->text);
}

}  // namespace cwt
