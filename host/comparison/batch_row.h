// A row of what a batch has written, as far as two of them are compared.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace cwt {

enum class RowStatus { kRated, kRefused, kFailed };

/// Weights are pounds, amounts cents, percentages hundredths of a per cent.
struct BatchLine {
    std::string class_code;  ///< As entered.
    std::string rated_as;
    int64_t weight = 0;
    int64_t charge = 0;
};

struct BatchRow {
    int64_t number = 0;
    std::string id;  ///< Empty when there is none.
    RowStatus status = RowStatus::kFailed;
    std::string reason;  ///< Why it is not rated.
    std::string tariff;
    std::string tariff_date;
    std::string origin;
    std::string destination;
    std::vector<BatchLine> lines;
    int64_t deficit_weight = 0;  ///< 0 when there is none.
    int64_t deficit_charge = 0;
    int64_t total_weight = 0;
    int64_t billed_weight = 0;
    int64_t weight_break = 0;  ///< Lowest weight of the billed weight's break; 0 when unknown.
    int64_t gross = 0;
    int64_t discount_percent = 0;
    int64_t discount = 0;
    int64_t net = 0;
    int64_t minimum = 0;
    int64_t surcharge = 0;
    int64_t due = 0;
};

/// The net charge is the minimum, since the discounted charge is below it.
inline bool MinimumHeld(const BatchRow& row) {
    return row.gross - row.discount < row.minimum;
}

/// Reads rows one after another. Throws Broken, with file, line and column, at what is none.
class RowReader {
 public:
    virtual ~RowReader() = default;
    /// Result: false at the end.
    virtual bool Next(BatchRow& row) = 0;
};

/// Reads "ndjson" or "csv"; empty: as the file's name ends.
std::unique_ptr<RowReader> MakeRowReader(const std::string& path, const std::string& form);

}  // namespace cwt
