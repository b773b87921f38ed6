#include "tariffs/record_text.h"

#include <fmt/core.h>

#include "tariffs/carried_text.h"

namespace cwt {
namespace {

/// What a record is told by, its first field.
std::string NameOf(const Family& family, std::string_view record) {
    return FieldText(family.fields[0], record.substr(0, family.fields[0].width));
}

/// Writes the entries of arrays that lie in a record; `number`, from 1, is the record's in a table.
void WriteInner(const Family& family, std::string_view record, std::size_t number,
                FolderWriter& folder) {
    const bool is_table = family.shape == Shape::kTable;
    for (const Inner& inner : family.inner) {
        const std::vector<Column> columns = ColumnsOf(inner.fields);
        std::string& text = folder.Sheet(inner.sheet);
        SheetWriter sheet(text);
        if (text.empty()) {
            if (is_table) sheet.Cell(kRecordColumn);
            sheet.Cell(inner.number);
            for (const Column& column : columns) sheet.Cell(column.name);
            if (is_table) sheet.Cell(inner.of);
            sheet.EndRow();
        }
        for (std::size_t i = 0; i < inner.count; ++i) {
            const auto entry = record.substr(inner.offset + i * inner.stride, inner.stride);
            if (entry.find_first_not_of(family.filling) == entry.npos) continue;
            if (is_table) sheet.Cell(fmt::format("{}", number));
            sheet.Cell(fmt::format("{}", i + 1));
            WriteCells(columns, entry, sheet);
            if (is_table) sheet.Cell(NameOf(family, record));
            sheet.EndRow();
        }
    }
}

/// Puts the entries that the folder tells into a file's records.
void ReadInner(const Family& family, std::string& records, FolderReader& folder) {
    const bool is_table = family.shape == Shape::kTable;
    const std::size_t count = records.size() / family.record_size;
    for (const Inner& inner : family.inner) {
        const auto text = folder.Sheet(inner.sheet);
        if (!text) continue;
        const std::vector<Column> columns = ColumnsOf(inner.fields);
        std::vector<SheetReader::Wanted> wanted = WantedColumns(columns);
        wanted.insert(wanted.begin(), {inner.number, true});
        if (is_table) {
            wanted.insert(wanted.begin(), {kRecordColumn, true});
            wanted.push_back({inner.of, false});
        }
        const std::size_t first = is_table ? 2 : 1, of = first + columns.size();
        SheetReader sheet(inner.sheet, *text, wanted, folder.findings());
        std::vector<bool> is_told(count * inner.count);
        while (sheet.Next()) {
            const std::size_t record = is_table ? sheet.Number(0, count) : 1;
            const std::size_t entry = sheet.Number(first - 1, inner.count);
            const std::string bytes =
                ReadCells(columns, first, inner.stride, family.filling, sheet);
            if (record == 0 || entry == 0) continue;
            if (is_table && !sheet.cell(of).empty()) {
                const std::string name = NameOf(
                    family, std::string_view(records).substr((record - 1) * family.record_size));
                if (sheet.cell(of) != name) {
                    sheet.Refuse(of, fmt::format("is not \"{}\", which {} has in row {}", name,
                                                 family.text, record));
                }
            }
            if (is_told[(record - 1) * inner.count + entry - 1]) {
                sheet.Refuse(first - 1, "is there twice");
            }
            is_told[(record - 1) * inner.count + entry - 1] = true;
            records.replace(
                (record - 1) * family.record_size + inner.offset + (entry - 1) * inner.stride,
                inner.stride, bytes);
        }
    }
}

std::optional<std::string> ReadTable(const Family& family, const std::string& sheet_name,
                                     FolderReader& folder) {
    const auto text = folder.Sheet(sheet_name);
    if (!text) return std::nullopt;
    const std::vector<Column> columns = ColumnsOf(family.fields);
    SheetReader sheet(sheet_name, *text, WantedColumns(columns), folder.findings());
    std::string records;
    for (std::size_t count = 1; sheet.Next(); ++count) {
        records += ReadCells(columns, 0, family.record_size, family.filling, sheet);
        if (family.most > 0 && count == family.most + 1) {
            folder.findings().Warn(
                sheet.place(),
                fmt::format("{} rows are read, this and the following are not", family.most));
        }
    }
    return records;
}

std::optional<std::string> ReadSingle(const Family& family, FolderReader& folder) {
    if (family.shape == Shape::kArray) {
        if (!folder.Sheet(family.inner[0].sheet)) return std::nullopt;
        return std::string(family.record_size, family.filling);
    }
    if (folder.settings().Section(family.text) == nullptr) return std::nullopt;
    return RecordOfSection(family.text, family.fields, family.record_size, family.filling,
                           folder.settings(), folder.findings());
}

}  // namespace

void WriteHeader(const std::vector<Column>& columns, SheetWriter& sheet) {
    for (const Column& column : columns) sheet.Cell(column.name);
    sheet.EndRow();
}

void WriteCells(const std::vector<Column>& columns, std::string_view record, SheetWriter& sheet) {
    bool is_blank = true;
    for (const Column& column : columns) {
        const std::string_view bytes = column.In(record);
        std::string text = IsLeftOut(*column.field, bytes) ? "" : FieldText(*column.field, bytes);
        is_blank = is_blank && text.empty();
        // A row without any text would pass for none.
        if (is_blank && &column == &columns.back()) text = kHex;
        sheet.Cell(text);
    }
}

std::string ReadCells(const std::vector<Column>& columns, std::size_t first_cell, std::size_t size,
                      char filling, SheetReader& sheet) {
    std::string record(size, filling);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Column& column = columns[i];
        const FieldBytes given = BytesOfText(*column.field, sheet.cell(first_cell + i));
        if (given.bytes) record.replace(column.offset, column.field->width, *given.bytes);
        if (given.problem.empty()) continue;
        given.bytes ? sheet.Warn(first_cell + i, given.problem)
                    : sheet.Refuse(first_cell + i, given.problem);
    }
    return record;
}

std::vector<SheetReader::Wanted> WantedColumns(const std::vector<Column>& columns) {
    std::vector<SheetReader::Wanted> wanted;
    wanted.reserve(columns.size() + 3);  // Some sheets have columns in front and behind.
    for (const Column& column : columns) wanted.push_back({column.name, column.field->is_needed});
    return wanted;
}

std::string_view WriteRecords(const Family& family, const std::string& sheet_name,
                              std::string_view bytes, FolderWriter& folder) {
    if (family.shape != Shape::kTable) {
        if (bytes.size() < family.record_size) return bytes;
        const std::string_view record = bytes.substr(0, family.record_size);
        if (family.shape == Shape::kSettings) {
            folder.settings().Add(family.text, family.fields, record);
        }
        WriteInner(family, record, 1, folder);
        return bytes.substr(family.record_size);
    }
    SheetWriter sheet(folder.Sheet(sheet_name));
    const std::vector<Column> columns = ColumnsOf(family.fields);
    WriteHeader(columns, sheet);
    for (std::size_t number = 1; bytes.size() >= family.record_size; ++number) {
        WriteCells(columns, bytes, sheet);
        sheet.EndRow();
        WriteInner(family, bytes.substr(0, family.record_size), number, folder);
        bytes.remove_prefix(family.record_size);
    }
    return bytes;
}

std::optional<std::string> ReadRecords(const Family& family, const std::string& sheet,
                                       FolderReader& folder) {
    std::optional<std::string> records = family.shape == Shape::kTable
                                             ? ReadTable(family, sheet, folder)
                                             : ReadSingle(family, folder);
    if (records && family.record_size > 0) ReadInner(family, *records, folder);
    return records;
}

}  // namespace cwt
