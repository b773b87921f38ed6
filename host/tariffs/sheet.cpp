#include "tariffs/sheet.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>

#include "text/csv.h"
#include "text/nearest_word.h"

namespace cwt {
namespace {

constexpr std::size_t kNone = std::string::npos;
constexpr std::size_t kLongestRow = std::size_t{1} << 20;
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

/// Where a cell of a row begins, in characters from 1.
std::size_t CharacterOf(std::string_view row, std::size_t cell) {
    std::size_t at = 0;
    bool quoted = false, starts = true;
    for (; cell > 0 && at < row.size(); ++at) {
        // Within a cell that does not begin with one, a quote is a character.
        if (row[at] == '"' && (quoted || starts || row[at - 1] == '"')) quoted = !quoted;
        starts = row[at] == ',' && !quoted;
        if (starts) --cell;
    }
    const auto is_start = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;
    };
    return 1 + static_cast<std::size_t>(std::ranges::count_if(row.substr(0, at), is_start));
}

}  // namespace

void SheetWriter::Cell(std::string_view text) {
    if (!first_) text_ += ',';
    AppendCsvField(text_, text);
    first_ = false;
}

void SheetWriter::EndRow() {
    text_ += '\n';
    first_ = true;
}

SheetReader::SheetReader(std::string file, std::string_view text,
                         const std::vector<Wanted>& columns, Findings& findings)
    : file_(std::move(file)), rest_(text), findings_(findings) {
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
    for (const Wanted& column : columns) names_.push_back(column.name);
    indexes_.assign(columns.size(), kNone);
    ReadHeader(columns);
}

void SheetReader::ReadHeader(const std::vector<Wanted>& columns) {
    if (rest_.starts_with("\xff\xfe") || rest_.starts_with("\xfe\xff")) {
        findings_.Refuse({file_, 1, 0}, "is a text in UTF-16; CSV in UTF-8 is wanted");
        rest_ = {};
        return;
    }
    const std::string_view header = rest_.substr(0, rest_.find('\n'));
    if (header.substr(0, header.empty() ? 0 : header.size() - 1).find('\r') != kNone) {
        findings_.Refuse({file_, 1, 0}, "its lines end with CR alone; LF, or CR and LF, is wanted");
        rest_ = {};
        return;
    }
    const bool is_there = ReadRow();
    DropBlankCells(0);
    if (!is_there || cells_.empty()) {
        findings_.Refuse({file_, 1, 0}, "the header is missing: the first row names the columns");
        rest_ = {};
        return;
    }
    width_ = cells_.size();
    const bool has_known = std::ranges::any_of(cells_, [&](const std::string& cell) {
        return std::ranges::find(names_, cell) != names_.end();
    });
    if (!has_known && !names_.empty()) {
        const bool is_otherwise_parted =
            cells_.size() == 1 && cells_[0].find_first_of(";\t|") != kNone;
        findings_.Refuse(
            {file_, line_, 1},
            is_otherwise_parted
                ? "between cells commas are wanted, not semicolons, tabs or bars"
                : "the header has none of the columns, of which the first is " + names_[0]);
        rest_ = {};
        return;
    }
    const std::vector<std::string_view> known(names_.begin(), names_.end());
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        const Place place{file_, line_, CharacterOf(row_, i)};
        const auto column = std::ranges::find(names_, cells_[i]);
        if (column == names_.end()) {
            const auto nearest = NearestWord(cells_[i], known);
            findings_.Warn(place,
                           fmt::format("nobody reads a column \"{}\"{}", cells_[i],
                                       nearest.empty() ? "" : "; is " + nearest[0] + " meant?"));
            continue;
        }
        std::size_t& index = indexes_[static_cast<std::size_t>(column - names_.begin())];
        if (index != kNone) {
            findings_.Refuse(place, fmt::format("the column {} is there twice", cells_[i]));
        }
        index = i;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (indexes_[i] == kNone && columns[i].is_needed) {
            findings_.Refuse({file_, line_, 0}, "the column " + names_[i] + " is missing");
            rest_ = {};
        }
    }
}

bool SheetReader::ReadRow() {
    for (;;) {
        if (rest_.empty()) return false;
        line_ = next_line_;
        const std::size_t end = CsvRowEnd(rest_, true, kLongestRow);
        row_ = rest_.substr(0, end);
        rest_.remove_prefix(row_.size());
        next_line_ += static_cast<std::size_t>(std::ranges::count(row_, '\n'));
        if (end == kNone) {
            findings_.Refuse(place(), "the row is longer than a million characters");
            rest_ = {};
            return false;
        }
        if (const std::string problem = SplitCsvRow(row_, cells_); !problem.empty()) {
            findings_.Refuse(place(), problem);
            continue;
        }
        if (cells_.size() == 1 && cells_[0].empty()) continue;
        return true;
    }
}

/// Spreadsheets write blank cells behind those that are in use.
void SheetReader::DropBlankCells(std::size_t width) {
    while (cells_.size() > width && cells_.back().empty()) cells_.pop_back();
}

bool SheetReader::Next() {
    // Below the last row they write blank rows too; between rows these are worth a look.
    for (Place blank; ReadRow();) {
        if (std::ranges::all_of(cells_, &std::string::empty)) {
            if (blank.line == 0) blank = place();
            continue;
        }
        if (blank.line > 0) findings_.Warn(blank, "from here to the next row all is blank");
        blank = {};
        DropBlankCells(width_);
        if (cells_.size() == width_) return true;
        findings_.Refuse(place(),
                         fmt::format("the row has {} cells, the header {}", cells_.size(), width_));
    }
    return false;
}

std::string_view SheetReader::cell(std::size_t column) const {
    return indexes_[column] == kNone ? std::string_view() : cells_[indexes_[column]];
}

std::size_t SheetReader::Number(std::size_t column, std::size_t most) {
    const std::string_view text = cell(column);
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= most) {
        return number;
    }
    Refuse(column, fmt::format("is no number from 1 to {}", most));
    return 0;
}

Place SheetReader::place(std::size_t column) const {
    return {file_, line_, indexes_[column] == kNone ? 0 : CharacterOf(row_, indexes_[column])};
}

std::string SheetReader::Words(std::size_t column) const {
    return ValueWords(names_[column], cell(column));
}

void SheetReader::Refuse(std::size_t column, const std::string& text) {
    findings_.Refuse(place(column), ValueText(names_[column], cell(column), text));
}

void SheetReader::Warn(std::size_t column, const std::string& text) {
    findings_.Warn(place(column), ValueText(names_[column], cell(column), text));
}

}  // namespace cwt
