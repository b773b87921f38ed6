// Rows as CSV: a header, and a record a row.
#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "bill/money.h"
#include "comparison/record_reader.h"
#include "comparison/row_readers.h"
#include "shipment/shipment.h"

namespace cwt {
namespace {

using Record = std::vector<std::string>;

enum class RowCellKind { kText, kAmount, kWhole, kWholeOrEmpty, kAmountOrEmpty };

/// A column of a rated row.
struct RowColumn {
    const char* name;
    RowCellKind kind;
    std::string BatchRow::*text = nullptr;
    int64_t BatchRow::*number = nullptr;
};

constexpr RowColumn kRowColumns[] = {
    {"tariff", RowCellKind::kText, &BatchRow::tariff},
    {"tariff_date", RowCellKind::kText, &BatchRow::tariff_date},
    {"origin_zip", RowCellKind::kText, &BatchRow::origin},
    {"destination_zip", RowCellKind::kText, &BatchRow::destination},
    {"deficit_weight", RowCellKind::kWholeOrEmpty, nullptr, &BatchRow::deficit_weight},
    {"deficit_charge", RowCellKind::kAmountOrEmpty, nullptr, &BatchRow::deficit_charge},
    {"total_weight", RowCellKind::kWhole, nullptr, &BatchRow::total_weight},
    {"billed_weight", RowCellKind::kWhole, nullptr, &BatchRow::billed_weight},
    {"weight_break", RowCellKind::kWholeOrEmpty, nullptr, &BatchRow::weight_break},
    {"gross_charge", RowCellKind::kAmount, nullptr, &BatchRow::gross},
    {"discount_percent", RowCellKind::kAmount, nullptr, &BatchRow::discount_percent},
    {"discount_amount", RowCellKind::kAmount, nullptr, &BatchRow::discount},
    {"net_charge", RowCellKind::kAmount, nullptr, &BatchRow::net},
    {"minimum_charge", RowCellKind::kAmount, nullptr, &BatchRow::minimum},
    {"surcharge", RowCellKind::kAmount, nullptr, &BatchRow::surcharge},
    {"total_due", RowCellKind::kAmount, nullptr, &BatchRow::due},
};

std::optional<int64_t> ParseWhole(const std::string& text) {
    int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

class CsvRowReader : public RowReader {
 public:
    explicit CsvRowReader(const std::string& path) : records_(path) {
        if (!records_.Next(header_)) return;
        const Record& names = header_;
        if (names.size() < 3 || names[0] != "row" || names[1] != "id" || names[2] != "status") {
            records_.Break("the header of a batch's rows begins with row,id,status");
        }
        for (const RowColumn& column : kRowColumns) places_.push_back(Find(column.name));
        for (std::size_t i = 1; i <= kMostLines; ++i) {
            lines_.push_back({Find(fmt::format("class_{}", i)), Find(fmt::format("rated_as_{}", i)),
                              Find(fmt::format("weight_{}", i)),
                              Find(fmt::format("charge_{}", i))});
        }
        currency_ = Find("currency");
        reason_ = Find("reason");
    }

    bool Next(BatchRow& row) override {
        if (!records_.Next(record_)) return false;
        if (record_.size() != header_.size()) {
            records_.Break(
                fmt::format("{} fields where the header has {}", record_.size(), header_.size()));
        }
        row = {};
        row.number = Whole(0);
        row.id = record_[1];
        const std::optional<RowStatus> status = StatusOf(record_[2]);
        if (!status) Complain(2, "rated, refused or failed is wanted");
        row.status = *status;
        row.reason = record_[reason_];
        if (row.status == RowStatus::kRated) {
            ReadBill(row);
        } else if (row.reason.empty()) {
            Complain(reason_, "no reason why it is not rated");
        }
        return true;
    }

 private:
    struct LinePlaces {
        std::size_t class_code, rated_as, weight, charge;
    };

    std::size_t Find(const std::string& name) const {
        const auto found = std::ranges::find(header_, name);
        if (found == header_.end()) records_.Break("a batch's rows have a column " + name);
        return static_cast<std::size_t>(found - header_.begin());
    }

    [[noreturn]] void Complain(std::size_t place, const std::string& text) const {
        records_.Break(header_[place] + ": " + text);
    }

    int64_t Whole(std::size_t place) const {
        const std::optional<int64_t> value = ParseWhole(record_[place]);
        if (!value) Complain(place, "a whole number is wanted");
        return *value;
    }

    int64_t Amount(std::size_t place) const {
        const std::optional<int64_t> value = ParseCents(record_[place]);
        if (!value) Complain(place, "an amount of two decimals is wanted");
        return *value;
    }

    void ReadBill(BatchRow& row) const {
        for (std::size_t i = 0; i < places_.size(); ++i) {
            const RowColumn& column = kRowColumns[i];
            const std::string& field = record_[places_[i]];
            const bool may_be_empty = column.kind == RowCellKind::kWholeOrEmpty ||
                                      column.kind == RowCellKind::kAmountOrEmpty;
            if (column.kind == RowCellKind::kText) {
                row.*column.text = field;
            } else if (!may_be_empty || !field.empty()) {
                const bool amount = column.kind == RowCellKind::kAmount ||
                                    column.kind == RowCellKind::kAmountOrEmpty;
                row.*column.number = amount ? Amount(places_[i]) : Whole(places_[i]);
            }
        }
        if (record_[currency_] != "USD") Complain(currency_, "USD is wanted");
        for (const LinePlaces& line : lines_) {
            if (record_[line.class_code].empty()) continue;
            row.lines.push_back({record_[line.class_code], record_[line.rated_as],
                                 Whole(line.weight), Amount(line.charge)});
        }
        if (row.lines.empty()) Complain(lines_[0].class_code, "no line has a class");
    }

    RecordReader records_;
    Record header_, record_;
    std::vector<std::size_t> places_;  ///< Of the columns.
    std::vector<LinePlaces> lines_;
    std::size_t currency_ = 0, reason_ = 0;
};

}  // namespace

std::unique_ptr<RowReader> MakeCsvRowReader(const std::string& path) {
    return std::make_unique<CsvRowReader>(path);
}

}  // namespace cwt
