// Rows as JSON, an object a line.
#include <algorithm>

#include "comparison/line_reader.h"
#include "comparison/row_draft.h"
#include "comparison/row_readers.h"

namespace cwt {
namespace {

/// The lowest weight of the break that a weight lies in.
int64_t BreakOf(const std::vector<int64_t>& breaks, int64_t weight) {
    int64_t found = 0;
    for (const int64_t lowest : breaks) {
        if (lowest <= weight) found = std::max(found, lowest);
    }
    return found;
}

class NdjsonRowReader : public RowReader {
 public:
    explicit NdjsonRowReader(const std::string& path) : lines_(path) {}

    bool Next(BatchRow& row) override {
        std::string_view line;
        if (!lines_.Next(line)) return false;
        RowDraft draft;
        if (const auto fault = ParseRow(line, draft)) lines_.Break(fault->column, fault->text);
        if (const std::string complaint = Complete(draft); !complaint.empty()) {
            lines_.Break(1, complaint);
        }
        row = std::move(draft);
        return true;
    }

 private:
    /// What the keys of a row together must hold. Result: what is wrong.
    static std::string Complete(RowDraft& draft) {
        if (draft.schema != "hundredweight/row/1") return "schema: hundredweight/row/1 is wanted";
        const std::optional<RowStatus> status = StatusOf(draft.status_word);
        if (!status) return "status: rated, refused or failed is wanted";
        draft.status = *status;
        if (draft.has_bill != (draft.status == RowStatus::kRated)) {
            return "a bill is wanted of a rated row, and of no other";
        }
        if (!draft.refusals.empty()) draft.reason = ReasonOf(draft.refusals);
        if (!draft.has_bill) return draft.reason.empty() ? "no reason why it is not rated" : "";
        if (draft.bill_schema != "hundredweight/bill/1") {
            return "bill.schema: hundredweight/bill/1 is wanted";
        }
        if (draft.currency != "USD") return "bill.currency: USD is wanted";
        if (draft.lines.empty()) return "bill.lines: none";
        draft.weight_break = BreakOf(draft.break_weights, draft.billed_weight);
        return "";
    }

    LineReader lines_;
};

}  // namespace

std::unique_ptr<RowReader> MakeNdjsonRowReader(const std::string& path) {
    return std::make_unique<NdjsonRowReader>(path);
}

}  // namespace cwt
