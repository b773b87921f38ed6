#include <fmt/format.h>

#include <utility>

#include "batch/row.h"
#include "batch/verdict.h"
#include "bill/bill_columns.h"
#include "shipment/shipment.h"
#include "text/csv.h"

namespace cwt {
namespace {

using Cells = std::vector<std::string>;

/// The names of the bill's columns, and why there is none.
Cells OutcomeNames() {
    Cells names;
    for (const auto& column : ColumnsBeforeLines()) names.emplace_back(column.name);
    for (std::size_t line = 1; line <= kMostLines; ++line) {
        for (const auto& column : LineColumns()) {
            names.push_back(fmt::format("{}_{}", column.name, line));
        }
    }
    for (const auto& column : ColumnsBehindLines()) names.emplace_back(column.name);
    names.insert(names.end(), {"code", "place", "reason"});
    return names;
}

class CsvForm : public RowForm {
 public:
    explicit CsvForm(const std::vector<std::string>& passed) : outcome_names_(OutcomeNames()) {
        Cells own = {"row", "id", "status"};
        own.insert(own.end(), outcome_names_.begin(), outcome_names_.end());
        passed_ = PassedNames(passed, own);
    }

    std::string Header() const override {
        std::string header = "row,id,status";
        AppendCells(header, passed_);
        AppendCells(header, outcome_names_);
        return header + "\r\n";
    }

    void Append(std::string& out, const Row& row) const override {
        const Verdict verdict = VerdictOf(row);
        out += fmt::format_int(row.number).c_str();
        AppendCells(out, {row.id, verdict.status});
        Cells passed = row.passed;
        passed.resize(passed_.size());
        AppendCells(out, passed);
        if (const auto* bill = std::get_if<Bill>(&row.outcome)) {
            AppendBill(out, *bill);
        } else {
            constexpr std::size_t kReasons = 3;
            out.append(outcome_names_.size() - kReasons, ',');
        }
        AppendCells(out, {verdict.code, verdict.place, verdict.reason});
        out += "\r\n";
    }

 private:
    static void AppendCells(std::string& out, const Cells& cells) {
        for (const std::string& cell : cells) {
            out += ',';
            AppendCsvField(out, cell);
        }
    }

    template <class Columns, class Of>
    static void AppendCells(std::string& out, const Columns& columns, const Of& of) {
        for (const auto& column : columns) {
            out += ',';
            AppendCsvField(out, column.cell(of));
        }
    }

    static void AppendBill(std::string& out, const Bill& bill) {
        AppendCells(out, ColumnsBeforeLines(), bill);
        for (const BillLine& line : bill.lines) AppendCells(out, LineColumns(), line);
        out.append((kMostLines - bill.lines.size()) * LineColumns().size(), ',');
        AppendCells(out, ColumnsBehindLines(), bill);
    }

    Cells outcome_names_;
    Cells passed_;
};

}  // namespace

std::unique_ptr<RowForm> MakeCsvForm(std::vector<std::string> passed) {
    return std::make_unique<CsvForm>(passed);
}

}  // namespace cwt
