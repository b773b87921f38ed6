#include "tariffs/odd_files.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "tariffs/carried_text.h"
#include "tariffs/record_text.h"
#include "text/code_page.h"

namespace cwt {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// The arrays of an index, in the order of its columns: where each begins for `count` entries.
struct IndexArrays {
    explicit IndexArrays(const Family& family, std::size_t count) {
        for (const Field& field : family.fields) {
            starts.push_back(size);
            size += count * field.width;
        }
    }
    std::vector<std::size_t> starts;
    std::size_t size = sizeof(std::uint16_t);
};

/// A line by its cells, or nothing when it cannot be made of them.
std::optional<std::string> LineOf(const std::vector<Column>& columns,
                                  const std::vector<std::string>& cells) {
    if (cells[0].starts_with(kHex)) {
        // Those are the bytes of the whole line.
        const auto is_blank = [](const std::string& cell) { return cell.empty(); };
        const bool is_whole = std::all_of(cells.begin() + 1, cells.end(), is_blank);
        return is_whole ? CarriedBytes(cells[0]) : std::nullopt;
    }
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        // A single column has the line as long as it is.
        const auto bytes = columns.size() == 1 ? CarriedBytes(cells[i])
                                               : BytesOfText(*columns[i].field, cells[i]).bytes;
        if (!bytes || bytes->size() > columns[i].field->width) return std::nullopt;
        line += *bytes;
    }
    return line.append(kLineEnd);
}

std::vector<std::string> CellsOf(const std::vector<Column>& columns, std::string_view line) {
    std::vector<std::string> cells(columns.size());
    const std::string_view text =
        line.substr(0, line.size() - std::min(line.size(), kLineEnd.size()));
    if (columns.size() == 1) {
        cells[0] = FromCodePage(text);
    } else if (text.size() == columns.back().offset + columns.back().field->width) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            cells[i] = FieldText(*columns[i].field, columns[i].In(text));
        }
    }
    if (!cells[0].empty() && LineOf(columns, cells) == line) return cells;
    cells.assign(columns.size(), "");
    cells[0] = HexOf(line);
    return cells;
}

}  // namespace

std::string_view WriteIndex(const Family& family, std::string_view bytes, FolderWriter& folder) {
    if (bytes.size() < sizeof(std::uint16_t)) return bytes;
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const std::size_t count = byte(0) + std::size_t{256} * byte(1);
    const IndexArrays arrays(family, count);
    if (bytes.size() < arrays.size) return bytes;
    SheetWriter sheet(folder.Sheet(family.text));
    WriteHeader(ColumnsOf(family.fields), sheet);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t f = 0; f < family.fields.size(); ++f) {
            const Field& field = family.fields[f];
            sheet.Cell(
                FieldText(field, bytes.substr(arrays.starts[f] + i * field.width, field.width)));
        }
        sheet.EndRow();
    }
    return bytes.substr(arrays.size);
}

std::optional<std::string> ReadIndex(const Family& family, FolderReader& folder) {
    const auto text = folder.Sheet(family.text);
    if (!text) return std::nullopt;
    SheetReader sheet(family.text, *text, WantedColumns(ColumnsOf(family.fields)),
                      folder.findings());
    std::vector<std::string> arrays(family.fields.size());
    std::size_t count = 0;
    for (; sheet.Next(); ++count) {
        for (std::size_t i = 0; i < arrays.size(); ++i) {
            const FieldBytes given = BytesOfText(family.fields[i], sheet.cell(i));
            if (!given.bytes) sheet.Refuse(i, given.problem);
            arrays[i] += given.bytes.value_or("");
        }
        if (count == std::numeric_limits<std::uint16_t>::max()) {
            sheet.Refuse(0, "is one entry more than the file's count can say");
            return std::nullopt;
        }
        if (count == family.most) {
            folder.findings().Warn(sheet.place(),
                                   fmt::format("a load refuses more than {} entries", family.most));
        }
    }
    std::string bytes = {static_cast<char>(count % 256), static_cast<char>(count / 256)};
    for (const std::string& array : arrays) bytes += array;
    return bytes;
}

std::string_view WriteLines(const Family& family, std::string_view bytes, FolderWriter& folder) {
    const std::vector<Column> columns = ColumnsOf(family.fields);
    SheetWriter sheet(folder.Sheet(family.text));
    WriteHeader(columns, sheet);
    while (!bytes.empty()) {
        const std::string_view line =
            bytes.substr(0, std::min(bytes.find('\n'), bytes.size() - 1) + 1);
        for (const std::string& cell : CellsOf(columns, line)) sheet.Cell(cell);
        sheet.EndRow();
        bytes.remove_prefix(line.size());
    }
    return bytes;
}

std::optional<std::string> ReadLines(const Family& family, FolderReader& folder) {
    const auto text = folder.Sheet(family.text);
    if (!text) return std::nullopt;
    const std::vector<Column> columns = ColumnsOf(family.fields);
    SheetReader sheet(family.text, *text, WantedColumns(columns), folder.findings());
    std::string bytes;
    for (std::size_t count = 1; sheet.Next(); ++count) {
        std::vector<std::string> cells;
        for (std::size_t i = 0; i < columns.size(); ++i) cells.emplace_back(sheet.cell(i));
        const auto line = LineOf(columns, cells);
        if (!line)
            sheet.Refuse(
                0,
                "makes no line: a cell is too long, has characters that the data cannot hold, or "
                "stands beside the bytes of a whole line");
        bytes += line.value_or("");
        if (family.most > 0 && count == family.most + 1) {
            folder.findings().Warn(
                sheet.place(),
                fmt::format("{} lines are read, this and the following are not", family.most));
        }
    }
    return bytes;
}

}  // namespace cwt
