#include "comparison/comparison_csv.h"

#include <fmt/format.h>

#include "bill/money.h"
#include "comparison/row_readers.h"
#include "text/csv.h"

namespace cwt {
namespace {

std::string WholeOrEmpty(int64_t value) {
    return value == 0 ? "" : fmt::to_string(value);
}

std::string ClassesOf(const BatchRow& row) {
    std::string classes;
    for (const BatchLine& line : row.lines) classes += (classes.empty() ? "" : " ") + line.rated_as;
    return classes;
}

/// A figure that each side has; of a rated row alone unless told.
struct ComparedFigure {
    const char* name;
    std::string (*text)(const BatchRow&);
    bool always = false;
};

constexpr ComparedFigure kFigures[] = {
    {"status", [](const BatchRow& row) { return std::string(StatusWord(row.status)); }, true},
    {"reason", [](const BatchRow& row) { return row.reason; }, true},
    {"tariff", [](const BatchRow& row) { return row.tariff; }},
    {"tariff_date", [](const BatchRow& row) { return row.tariff_date; }},
    {"rated_as", ClassesOf},
    {"billed_weight", [](const BatchRow& row) { return fmt::to_string(row.billed_weight); }},
    {"weight_break", [](const BatchRow& row) { return WholeOrEmpty(row.weight_break); }},
    {"deficit_weight", [](const BatchRow& row) { return WholeOrEmpty(row.deficit_weight); }},
    {"deficit_charge", [](const BatchRow& row) { return AmountOf(row.deficit_charge); }},
    {"gross_charge", [](const BatchRow& row) { return AmountOf(row.gross); }},
    {"discount_percent", [](const BatchRow& row) { return AmountOf(row.discount_percent); }},
    {"discount_amount", [](const BatchRow& row) { return AmountOf(row.discount); }},
    {"minimum_charge", [](const BatchRow& row) { return AmountOf(row.minimum); }},
    {"minimum_held",
     [](const BatchRow& row) { return std::string(MinimumHeld(row) ? "yes" : "no"); }},
    {"net_charge", [](const BatchRow& row) { return AmountOf(row.net); }},
    {"surcharge", [](const BatchRow& row) { return AmountOf(row.surcharge); }},
    {"total_due", [](const BatchRow& row) { return AmountOf(row.due); }},
};

}  // namespace

std::string PairHeader() {
    std::string header = "row,id,origin_zip,destination_zip,total_weight";
    for (const ComparedFigure& figure : kFigures)
        header += fmt::format(",{0}_old,{0}_new", figure.name);
    return header + ",change,change_percent\r\n";
}

std::string PairRow(const BatchRow& old_row, const BatchRow& new_row) {
    const bool old_rated = old_row.status == RowStatus::kRated;
    const bool new_rated = new_row.status == RowStatus::kRated;
    const BatchRow& known = old_rated ? old_row : new_row;
    std::string text = fmt::to_string(old_row.number);
    const auto add = [&](const std::string& field) { AppendCsvField(text += ',', field); };
    for (const std::string* field : {&old_row.id, &known.origin, &known.destination}) add(*field);
    add(WholeOrEmpty(known.total_weight));
    for (const ComparedFigure& figure : kFigures) {
        for (const BatchRow* row : {&old_row, &new_row}) {
            const bool shown = figure.always || row->status == RowStatus::kRated;
            add(shown ? figure.text(*row) : "");
        }
    }
    if (!old_rated || !new_rated) return text + ",,\r\n";
    const int64_t change = new_row.due - old_row.due;
    const std::optional<int64_t> share = ShareOf(change, old_row.due);
    return text + fmt::format(",{},{}\r\n", AmountOf(change), share ? AmountOf(*share) : "");
}

}  // namespace cwt
