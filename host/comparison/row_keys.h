// The keys of a row in JSON that somebody reads.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "comparison/row_draft.h"

namespace cwt {

/// Objects and lists of a row.
enum Level : std::uint8_t {
    kRow,
    kBill,
    kTariff,
    kOrigin,
    kDestination,
    kLines,
    kLine,
    kDeficit,
    kDiscount,
    kBreaks,
    kBreakList,
    kBreak,
    kRefusals,
    kRefusal,
    kAlternatives,
    kNone
};

enum class Presence : std::uint8_t { kValue, kValueOrNull, kNothing };

/// A key of an object, or, without a name, the entries of a list: a text, an amount, a whole number
/// or another level.
struct Key {
    Level level;
    std::string_view name;
    Presence need = Presence::kValue;
    std::string RowDraft::*text = nullptr;
    int64_t RowDraft::*amount = nullptr;
    int64_t RowDraft::*whole = nullptr;
    Level opens = kNone;
};

inline constexpr Key kKeys[] = {
    {.level = kRow, .name = "schema", .text = &RowDraft::schema},
    {.level = kRow, .name = "row", .whole = &RowDraft::number},
    {.level = kRow, .name = "id", .need = Presence::kValueOrNull, .text = &RowDraft::id},
    {.level = kRow, .name = "status", .text = &RowDraft::status_word},
    {.level = kRow, .name = "bill", .need = Presence::kNothing, .opens = kBill},
    {.level = kRow, .name = "refusals", .need = Presence::kNothing, .opens = kRefusals},
    {.level = kRow, .name = "reason", .need = Presence::kNothing, .text = &RowDraft::reason},
    {.level = kBill, .name = "schema", .text = &RowDraft::bill_schema},
    {.level = kBill, .name = "currency", .text = &RowDraft::currency},
    {.level = kBill, .name = "tariff", .opens = kTariff},
    {.level = kTariff, .name = "name", .text = &RowDraft::tariff},
    {.level = kTariff, .name = "date", .text = &RowDraft::tariff_date},
    {.level = kBill, .name = "origin", .opens = kOrigin},
    {.level = kOrigin, .name = "zip", .text = &RowDraft::origin},
    {.level = kBill, .name = "destination", .opens = kDestination},
    {.level = kDestination, .name = "zip", .text = &RowDraft::destination},
    {.level = kBill, .name = "lines", .opens = kLines},
    {.level = kLines, .name = "", .opens = kLine},
    {.level = kLine, .name = "class", .text = &RowDraft::line_class},
    {.level = kLine, .name = "rated_as", .text = &RowDraft::line_rated_as},
    {.level = kLine, .name = "weight", .whole = &RowDraft::line_weight},
    {.level = kLine, .name = "charge", .amount = &RowDraft::line_charge},
    {.level = kBill, .name = "deficit", .need = Presence::kValueOrNull, .opens = kDeficit},
    {.level = kDeficit, .name = "weight", .whole = &RowDraft::deficit_weight},
    {.level = kDeficit, .name = "charge", .amount = &RowDraft::deficit_charge},
    {.level = kBill, .name = "total_weight", .whole = &RowDraft::total_weight},
    {.level = kBill, .name = "billed_weight", .whole = &RowDraft::billed_weight},
    {.level = kBill, .name = "gross_charge", .amount = &RowDraft::gross},
    {.level = kBill, .name = "discount", .opens = kDiscount},
    {.level = kDiscount, .name = "percent", .amount = &RowDraft::discount_percent},
    {.level = kDiscount, .name = "amount", .amount = &RowDraft::discount},
    {.level = kBill, .name = "net_charge", .amount = &RowDraft::net},
    {.level = kBill, .name = "minimum_charge", .amount = &RowDraft::minimum},
    {.level = kBill, .name = "surcharge", .amount = &RowDraft::surcharge},
    {.level = kBill, .name = "total_due", .amount = &RowDraft::due},
    {.level = kBill, .name = "charges_by_break", .opens = kBreaks},
    {.level = kBreaks, .name = "minimum", .opens = kBreakList},
    {.level = kBreakList, .name = "", .opens = kBreak},
    {.level = kBreak, .name = "weight", .whole = &RowDraft::break_weight},
    {.level = kRefusals, .name = "", .opens = kRefusal},
    {.level = kRefusal, .name = "place", .text = &RowDraft::place},
    {.level = kRefusal, .name = "code", .need = Presence::kValueOrNull, .whole = &RowDraft::code},
    {.level = kRefusal, .name = "text", .text = &RowDraft::text},
    {.level = kRefusal, .name = "written", .text = &RowDraft::written},
    {.level = kRefusal, .name = "alternatives", .opens = kAlternatives},
    {.level = kAlternatives, .name = "", .text = &RowDraft::alternative},
};

/// The row itself.
inline constexpr Key kWholeRow = {.level = kNone, .name = "", .opens = kRow};

inline bool IsList(Level level) {
    return level == kLines || level == kBreakList || level == kRefusals || level == kAlternatives;
}

inline const Key* FindKey(Level level, std::string_view name) {
    const auto* const found = std::ranges::find_if(
        kKeys, [&](const Key& key) { return key.level == level && key.name == name; });
    return found == std::end(kKeys) ? nullptr : found;
}

inline uint64_t BitOf(const Key& key) {
    return uint64_t{1} << (&key - kKeys);
}
static_assert(std::size(kKeys) <= 64);

}  // namespace cwt
