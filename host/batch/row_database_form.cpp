#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "batch/row.h"
#include "batch/row_tables.h"
#include "batch/verdict.h"

namespace cwt {
namespace {

class DatabaseForm : public RowForm {
 public:
    explicit DatabaseForm(std::size_t passed) : passed_(passed) {}

    void Append(std::string& out, const Row& row) const override {
        const std::string number = fmt::to_string(row.number);
        const Verdict verdict = VerdictOf(row);
        out += static_cast<char>(kBillsTable);
        AppendCells(out, {number, row.id, verdict.status});
        const auto* const bill = std::get_if<Bill>(&row.outcome);
        AppendCells(out, ColumnsBeforeLines(), bill);
        AppendCells(out, ColumnsBehindLines(), bill);
        AppendCells(out, {verdict.code, verdict.place, verdict.reason});
        for (std::size_t i = 0; i < passed_; ++i) {
            AppendCell(out, i < row.passed.size() ? row.passed[i] : "");
        }
        if (bill != nullptr) AppendLines(out, number, bill->lines);
        if (const auto* refusals = std::get_if<Refusals>(&row.outcome)) {
            AppendRefusals(out, number, *refusals);
        }
    }

 private:
    static void AppendCells(std::string& out, std::initializer_list<std::string_view> cells) {
        for (const std::string_view cell : cells) AppendCell(out, cell);
    }

    /// Amounts go in cents, the rest as it is. Where there is nothing, every cell is empty.
    template <class Columns, class Of>
    static void AppendCells(std::string& out, const Columns& columns, const Of* of) {
        for (const auto& column : columns) {
            std::string cell = of != nullptr ? column.cell(*of) : "";
            if (column.type == ColumnType::kAmount) std::erase(cell, '.');
            AppendCell(out, cell);
        }
    }

    static void AppendLines(std::string& out, const std::string& number,
                            const std::vector<BillLine>& lines) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            out += static_cast<char>(kLinesTable);
            AppendCells(out, {number, fmt::to_string(i + 1)});
            AppendCells(out, LineColumns(), &lines[i]);
        }
    }

    static void AppendRefusals(std::string& out, const std::string& number,
                               const Refusals& refusals) {
        for (const Refusal& refusal : refusals) {
            out += static_cast<char>(kRefusalsTable);
            AppendCells(
                out, {number, refusal.place,
                      refusal.code > 0 ? fmt::to_string(refusal.code) : std::string(), refusal.text,
                      refusal.written, fmt::to_string(fmt::join(refusal.alternatives, "; "))});
        }
    }

    std::size_t passed_;
};

}  // namespace

std::unique_ptr<RowForm> MakeDatabaseForm(std::vector<std::string> passed) {
    return std::make_unique<DatabaseForm>(passed.size());
}

}  // namespace cwt
