#include <fmt/format.h>

#include <map>

#include "tariffs/difference/difference.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

/// Members of an object, one after another.
class Members {
 public:
    explicit Members(JsonWriter& json) : json_(json) {}

    void Text(std::string_view name, std::string_view text) { json_.Key(name).Text(text); }
    void TextOrNull(std::string_view name, std::string_view text) {
        json_.Key(name).TextOrNull(text);
    }
    void Count(std::string_view name, std::size_t count) {
        json_.Key(name).Number(static_cast<std::int64_t>(count));
    }
    void CountOrNull(std::string_view name, std::size_t count) {
        count == 0 ? json_.Key(name).Null() : Count(name, count);
    }
    void Flag(std::string_view name, bool flag) { json_.Key(name).Flag(flag); }
    /// A number of two decimals, as a text.
    void Decimals(std::string_view name, std::optional<double> number) {
        number ? json_.Key(name).Text(fmt::format("{:.2f}", *number)) : json_.Key(name).Null();
    }

 private:
    JsonWriter& json_;
};

const char* WhereOf(bool in_old, bool in_new) {
    return in_old && in_new ? "both" : in_new ? "new" : "old";
}

const char* UnitOf(ColumnMeasure measure) {
    switch (measure) {
        case ColumnMeasure::kAmount:
            return "percent";
        case ColumnMeasure::kShare:
            return "points";
        case ColumnMeasure::kNone:
            break;
    }
    return "";
}

void WriteSide(const DifferenceSide& side, JsonWriter& json) {
    json.Object([&] {
        Members members(json);
        members.Text("path", side.path);
        members.Text("form", side.is_folder ? "folder" : "directory");
        members.Text("set", side.set);
    });
}

void WriteColumn(const ColumnDifference& column, JsonWriter& json) {
    json.Object([&] {
        Members members(json);
        members.Text("column", column.name);
        members.Count("columns", column.columns);
        members.Count("cells", column.cells);
        members.Count("changed", column.changed);
        members.Count("rose", column.rose);
        members.Count("fell", column.fell);
        members.Count("without_base", column.without_base);
        members.TextOrNull("unit", UnitOf(column.measure));
        const bool has_steps = column.rose + column.fell > column.without_base;
        const auto step = [&](double by) { return has_steps ? std::optional(by) : std::nullopt; };
        members.Decimals("least", step(column.least));
        members.Decimals("median", step(column.median));
        members.Decimals("greatest", step(column.greatest));
    });
}

const char* KindOf(const RowDifference& row) {
    if (row.old_number == 0) return "new";
    if (row.new_number == 0) return "gone";
    return row.is_changed ? "changed" : "moved";
}

void WriteRow(const SheetDifference& sheet, const RowDifference& row, JsonWriter& json) {
    json.Object([&] {
        Members members(json);
        members.Text("change", KindOf(row));
        members.Text("name", RowName(sheet, row));
        members.CountOrNull("old_row", row.old_number);
        members.CountOrNull("new_row", row.new_number);
        members.Flag("moved", row.is_moved);
        json.Key("cells").Array([&] {
            for (const CellDifference& cell : CellDifferences(sheet, row)) {
                json.Object([&] {
                    members.Text("column", cell.column);
                    members.TextOrNull("old", cell.of_old);
                    members.TextOrNull("new", cell.of_new);
                    const ColumnMeasure measure = MeasureOf(cell.column);
                    const auto by = StepOf(measure, cell.of_old, cell.of_new);
                    if (by && by->by) members.Decimals(UnitOf(measure), by->by);
                });
            }
        });
    });
}

void WriteSheet(const SheetDifference& sheet, bool all, JsonWriter& json) {
    json.Object([&] {
        Members members(json);
        members.Text("sheet", sheet.name);
        members.TextOrNull("subject", sheet.subject.words);
        members.Text("in", WhereOf(sheet.is_in_old, sheet.is_in_new));
        members.Flag("read", sheet.is_read);
        members.Count("old_rows", sheet.old_rows);
        members.Count("new_rows", sheet.new_rows);
        members.Count("changed", sheet.changed);
        members.Count("new", sheet.added);
        members.Count("gone", sheet.gone);
        members.Count("moved", sheet.moved);
        for (const bool in_new : {true, false}) {
            json.Key(in_new ? "new_columns" : "gone_columns").Array([&] {
                for (const ComparedColumn& column : sheet.columns) {
                    const std::size_t missing = in_new ? column.in_old : column.in_new;
                    if (missing == std::string::npos) json.Text(column.name);
                }
            });
        }
        json.Key("columns").Array([&] {
            for (const ColumnDifference& column : sheet.column_differences) {
                WriteColumn(column, json);
            }
        });
        // Each kind of change has its first rows.
        std::map<std::string_view, std::size_t> written;
        std::size_t left_out = 0;
        json.Key("rows").Array([&] {
            for (const RowDifference& row : sheet.rows) {
                const bool has_room = all || written[KindOf(row)]++ < kRowsNamed;
                has_room ? WriteRow(sheet, row, json) : void(++left_out);
            }
        });
        members.Count("rows_left_out", left_out);
    });
}

}  // namespace

std::string DifferenceJson(const Difference& difference, bool all) {
    return DocumentOf([&](JsonWriter& json) {
        json.Object([&] {
            Members members(json);
            members.Text("schema", "hundredweight/difference/1");
            WriteSide(difference.of_old, (json.Key("old"), json));
            WriteSide(difference.of_new, (json.Key("new"), json));
            members.Flag("alike", difference.is_alike());
            json.Key("sheets").Array([&] {
                for (const SheetDifference& sheet : difference.sheets) WriteSheet(sheet, all, json);
            });
            json.Key("files").Array([&] {
                for (const FileDifference& file : difference.files) {
                    json.Object([&] {
                        members.Text("file", file.name);
                        members.Text("in",
                                     WhereOf(file.old_size.has_value(), file.new_size.has_value()));
                    });
                }
            });
            json.Key("not_compared").Array([&] {
                for (const std::string& name : difference.not_compared) json.Text(name);
            });
        });
    });
}

}  // namespace cwt
