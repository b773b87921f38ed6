// What is being read of a row in JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "comparison/batch_row.h"
#include "shipment/refusal.h"

namespace cwt {

/// A row as its keys come, before they have been held against each other.
struct RowDraft : BatchRow {
    std::string schema, status_word, bill_schema, currency, line_class, line_rated_as, alternative;
    int64_t line_weight = 0, line_charge = 0, break_weight = 0, code = 0;
    std::vector<int64_t> break_weights;
    std::string place, text, written;
    std::vector<std::string> alternatives;
    Refusals refusals;
    bool has_bill = false;
};

struct RowFault {
    std::size_t column;  ///< In bytes from 1: how far the text was read.
    std::string text;
};

/// Takes what is compared from the text of a row. Result: what is wrong with it.
std::optional<RowFault> ParseRow(std::string_view text, RowDraft& draft);

}  // namespace cwt
