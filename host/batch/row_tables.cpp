#include "batch/row_tables.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "batch/verdict.h"

namespace cwt {
namespace {

using enum ColumnType;

template <class Columns>
void AddColumns(std::vector<TableColumn>& table, const Columns& columns) {
    for (const auto& column : columns) {
        const char* const unit = column.type == kAmount ? "_cents" : "";
        table.push_back({std::string(column.name) + unit, column.type});
    }
}

}  // namespace

RowTables MakeRowTables(const std::vector<std::string>& passed) {
    RowTables tables;
    std::vector<TableColumn>& bills = tables[kBillsTable];
    bills = {{"row", kWhole}, {"id", kText}, {"status", kText}};
    AddColumns(bills, ColumnsBeforeLines());
    AddColumns(bills, ColumnsBehindLines());
    bills.insert(bills.end(), {{"code", kWhole}, {"place", kText}, {"reason", kText}});
    std::vector<std::string> taken;
    taken.reserve(bills.size());
    for (const TableColumn& column : bills) taken.push_back(column.name);
    for (const std::string& name : PassedNames(passed, taken)) bills.push_back({name, kText});
    tables[kLinesTable] = {{"row", kWhole}, {"line", kWhole}};
    AddColumns(tables[kLinesTable], LineColumns());
    tables[kRefusalsTable] = {{"row", kWhole}, {"place", kText},   {"code", kWhole},
                              {"text", kText}, {"written", kText}, {"alternatives", kText}};
    return tables;
}

void AppendCell(std::string& out, std::string_view text) {
    const auto size = static_cast<std::uint32_t>(text.size());
    char bytes[sizeof size];
    std::memcpy(bytes, &size, sizeof size);
    out.append(bytes, sizeof size);
    out += text;
}

std::string_view TakeCell(std::string_view& encoded) {
    std::uint32_t size = 0;
    if (encoded.size() < sizeof size) throw std::logic_error("a text is cut");
    std::memcpy(&size, encoded.data(), sizeof size);
    encoded.remove_prefix(sizeof size);
    if (encoded.size() < size) throw std::logic_error("a text is cut");
    const std::string_view text = encoded.substr(0, size);
    encoded.remove_prefix(size);
    return text;
}

}  // namespace cwt
