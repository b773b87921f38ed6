#include "row_columns.h"

#include <fmt/format.h>

#include <charconv>
#include <stdexcept>

#include "batch/row.h"
#include "bill/money.h"
#include "shipment/shipment.h"
#include "text/csv.h"

namespace cwt {
namespace {

namespace py = pybind11;
using enum ColumnType;

constexpr std::size_t kMostKnownTexts = 4096;

std::string NameOf(const char* name, ColumnType type) {
    return type == kAmount ? fmt::format("{}_cents", name) : name;
}

std::runtime_error NoRow(std::uint64_t row, const std::string& fault) {
    return std::runtime_error(fmt::format("row {} of the bills: {}", row, fault));
}

std::int64_t NumberOf(ColumnType type, const std::string& cell) {
    if (type != kWhole) {
        if (const auto cents = ParseCents(cell)) return *cents;
    } else {
        std::int64_t number = 0;
        const char* const end = cell.data() + cell.size();
        const auto read = std::from_chars(cell.data(), end, number);
        if (read.ec == std::errc() && read.ptr == end) return number;
    }
    throw std::runtime_error("\"" + cell + "\" is no number");
}

}  // namespace

RowColumns::RowColumns() : header_(MakeCsvForm({})->Header()) {
    columns_ = {{"id", kText}, {"status", kText}};
    for (const auto& column : ColumnsBeforeLines()) {
        columns_.push_back({NameOf(column.name, column.type), column.type});
    }
    for (std::size_t line = 1; line <= kMostLines; ++line) {
        for (const auto& column : LineColumns()) {
            const std::string name = NameOf(column.name, column.type);
            columns_.push_back({fmt::format("{}_{}", name, line), column.type});
        }
    }
    for (const auto& column : ColumnsBehindLines()) {
        columns_.push_back({NameOf(column.name, column.type), column.type});
    }
    columns_.push_back({"code", kWhole});
    columns_.push_back({"place", kText});
    columns_.push_back({"reason", kText});
}

void RowColumns::Append(std::string_view text) {
    rest_ += text;
    std::string_view rows = rest_;
    for (std::size_t end; (end = CsvRowEnd(rows, false, rows.size())) != rows.npos;) {
        AppendRow(rows.substr(0, end));
        rows.remove_prefix(end);
    }
    rest_.erase(0, rest_.size() - rows.size());
}

void RowColumns::AppendRow(std::string_view row) {
    const std::uint64_t number = rows_ + 1;
    if (const std::string fault = SplitCsvRow(row, fields_); !fault.empty()) {
        throw NoRow(number, fault);
    }
    if (fields_.size() != columns_.size() + 1) throw NoRow(number, "not as many cells as columns");
    if (fields_[0] != fmt::to_string(number)) throw NoRow(number, "its number is " + fields_[0]);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        try {
            AppendCell(columns_[i], fields_[i + 1]);
        } catch (const std::runtime_error& error) {
            throw NoRow(number, columns_[i].name + ": " + error.what());
        }
    }
    rows_ = number;
}

void RowColumns::AppendCell(RowColumn& column, const std::string& cell) {
    if (column.type != kText) {
        column.missing.push_back(cell.empty() ? 1 : 0);
        column.numbers.push_back(cell.empty() ? 0 : NumberOf(column.type, cell));
        return;
    }
    if (cell.empty()) return column.texts.append(py::none());
    if (const auto found = column.known_texts.find(cell); found != column.known_texts.end()) {
        return column.texts.append(found->second);
    }
    py::object text = py::str(cell);
    column.texts.append(text);
    if (column.known_texts.size() < kMostKnownTexts) column.known_texts.emplace(cell, text);
}

py::list RowColumns::Take() const {
    py::list columns;
    for (const RowColumn& column : columns_) {
        if (column.type == kText) {
            columns.append(py::make_tuple(column.name, "text", column.texts));
            continue;
        }
        const auto size = static_cast<py::ssize_t>(column.numbers.size());
        py::array_t<bool> missing(size);
        std::copy(column.missing.begin(), column.missing.end(), missing.mutable_data());
        const char* const kind = column.type == kPercent ? "percent" : "whole";
        columns.append(py::make_tuple(
            column.name, kind, py::array_t<std::int64_t>(size, column.numbers.data()), missing));
    }
    return columns;
}

}  // namespace cwt
