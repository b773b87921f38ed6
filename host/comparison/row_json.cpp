// Rows as JSON, an object a line.
#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "bill/money.h"
#include "comparison/line_reader.h"
#include "comparison/row_readers.h"
#include "shipment/refusal.h"

namespace cwt {
namespace {

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

/// What is being read of a row.
struct Draft : BatchRow {
    std::string schema, status_word, bill_schema, currency, line_class, line_rated_as, alternative;
    int64_t line_weight = 0, line_charge = 0, break_weight = 0, code = 0;
    std::vector<int64_t> break_weights;
    std::string place, text, written;
    std::vector<std::string> alternatives;
    Refusals refusals;
    bool has_bill = false;
};

enum class Need : std::uint8_t { kValue, kValueOrNull, kNothing };

/// A key of an object, or, without a name, the entries of a list: a text, an amount, a whole number
/// or another level.
struct Key {
    Level level;
    std::string_view name;
    Need need = Need::kValue;
    std::string Draft::*text = nullptr;
    int64_t Draft::*amount = nullptr;
    int64_t Draft::*whole = nullptr;
    Level opens = kNone;
};

constexpr Key kKeys[] = {
    {.level = kRow, .name = "schema", .text = &Draft::schema},
    {.level = kRow, .name = "row", .whole = &Draft::number},
    {.level = kRow, .name = "id", .need = Need::kValueOrNull, .text = &Draft::id},
    {.level = kRow, .name = "status", .text = &Draft::status_word},
    {.level = kRow, .name = "bill", .need = Need::kNothing, .opens = kBill},
    {.level = kRow, .name = "refusals", .need = Need::kNothing, .opens = kRefusals},
    {.level = kRow, .name = "reason", .need = Need::kNothing, .text = &Draft::reason},
    {.level = kBill, .name = "schema", .text = &Draft::bill_schema},
    {.level = kBill, .name = "currency", .text = &Draft::currency},
    {.level = kBill, .name = "tariff", .opens = kTariff},
    {.level = kTariff, .name = "name", .text = &Draft::tariff},
    {.level = kTariff, .name = "date", .text = &Draft::tariff_date},
    {.level = kBill, .name = "origin", .opens = kOrigin},
    {.level = kOrigin, .name = "zip", .text = &Draft::origin},
    {.level = kBill, .name = "destination", .opens = kDestination},
    {.level = kDestination, .name = "zip", .text = &Draft::destination},
    {.level = kBill, .name = "lines", .opens = kLines},
    {.level = kLines, .name = "", .opens = kLine},
    {.level = kLine, .name = "class", .text = &Draft::line_class},
    {.level = kLine, .name = "rated_as", .text = &Draft::line_rated_as},
    {.level = kLine, .name = "weight", .whole = &Draft::line_weight},
    {.level = kLine, .name = "charge", .amount = &Draft::line_charge},
    {.level = kBill, .name = "deficit", .need = Need::kValueOrNull, .opens = kDeficit},
    {.level = kDeficit, .name = "weight", .whole = &Draft::deficit_weight},
    {.level = kDeficit, .name = "charge", .amount = &Draft::deficit_charge},
    {.level = kBill, .name = "total_weight", .whole = &Draft::total_weight},
    {.level = kBill, .name = "billed_weight", .whole = &Draft::billed_weight},
    {.level = kBill, .name = "gross_charge", .amount = &Draft::gross},
    {.level = kBill, .name = "discount", .opens = kDiscount},
    {.level = kDiscount, .name = "percent", .amount = &Draft::discount_percent},
    {.level = kDiscount, .name = "amount", .amount = &Draft::discount},
    {.level = kBill, .name = "net_charge", .amount = &Draft::net},
    {.level = kBill, .name = "minimum_charge", .amount = &Draft::minimum},
    {.level = kBill, .name = "surcharge", .amount = &Draft::surcharge},
    {.level = kBill, .name = "total_due", .amount = &Draft::due},
    {.level = kBill, .name = "charges_by_break", .opens = kBreaks},
    {.level = kBreaks, .name = "minimum", .opens = kBreakList},
    {.level = kBreakList, .name = "", .opens = kBreak},
    {.level = kBreak, .name = "weight", .whole = &Draft::break_weight},
    {.level = kRefusals, .name = "", .opens = kRefusal},
    {.level = kRefusal, .name = "place", .text = &Draft::place},
    {.level = kRefusal, .name = "code", .need = Need::kValueOrNull, .whole = &Draft::code},
    {.level = kRefusal, .name = "text", .text = &Draft::text},
    {.level = kRefusal, .name = "written", .text = &Draft::written},
    {.level = kRefusal, .name = "alternatives", .opens = kAlternatives},
    {.level = kAlternatives, .name = "", .text = &Draft::alternative},
};

/// The row itself.
constexpr Key kWhole = {.level = kNone, .name = "", .opens = kRow};

bool IsList(Level level) {
    return level == kLines || level == kBreakList || level == kRefusals || level == kAlternatives;
}

const Key* Find(Level level, std::string_view name) {
    const auto* const found = std::ranges::find_if(
        kKeys, [&](const Key& key) { return key.level == level && key.name == name; });
    return found == std::end(kKeys) ? nullptr : found;
}

uint64_t BitOf(const Key& key) {
    return uint64_t{1} << (&key - kKeys);
}
static_assert(std::size(kKeys) <= 64);

/// The events of a parser, as it calls them.
class RowEvents {
 public:
    explicit RowEvents(Draft& draft) : draft_(draft) {}

    const std::string& complaint() const { return complaint_; }

    bool null() {
        if (IsIgnored() || key_->need == Need::kValueOrNull) return true;
        return Fail("no value");
    }
    bool boolean(bool /*value*/) { return IsIgnored() || Fail("neither true nor false is wanted"); }
    bool number_integer(int64_t value) {
        if (IsIgnored()) return true;
        if (key_->whole == nullptr) return Fail("no number is wanted");
        draft_.*key_->whole = value;
        return true;
    }
    bool number_unsigned(uint64_t value) {
        constexpr uint64_t kMost = uint64_t{1} << 53;
        return value <= kMost ? number_integer(static_cast<int64_t>(value))
                              : IsIgnored() || Fail("the number is too large");
    }
    bool number_float(double /*value*/, const std::string& /*text*/) {
        return IsIgnored() || Fail("a whole number is wanted");
    }
    bool string(std::string& value) {
        if (IsIgnored()) return true;
        if (key_->amount != nullptr) {
            const std::optional<int64_t> cents = ParseCents(value);
            if (cents) draft_.*key_->amount = *cents;
            return cents || Fail("an amount of two decimals is wanted");
        }
        if (key_->text == nullptr) return Fail("no text is wanted");
        draft_.*key_->text = value;
        if (key_->level == kAlternatives) draft_.alternatives.push_back(value);
        return true;
    }
    bool binary(nlohmann::json::binary_t& /*value*/) { return Fail("no bytes are wanted"); }

    bool start_object(std::size_t /*size*/) { return Start(false); }
    bool start_array(std::size_t /*size*/) { return Start(true); }
    bool end_array() { return End(); }
    bool end_object() {
        if (ignored_ == 0 && !IsComplete()) return false;
        return End();
    }
    bool key(std::string& name) {
        if (ignored_ > 0) return true;
        key_ = Find(levels_.back().level, name);
        if (key_ == nullptr) return true;
        uint64_t& seen = levels_.back().seen;
        if ((seen & BitOf(*key_)) != 0) return Fail("the key is there twice");
        seen |= BitOf(*key_);
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::json::exception& /*error*/) {
        return Fail("this is no JSON in UTF-8, or it ends too early");
    }

 private:
    struct Open {
        Level level;
        uint64_t seen;
        const Key* key;  ///< Under which it is.
    };

    bool IsIgnored() const { return ignored_ > 0 || key_ == nullptr; }

    bool Start(bool list) {
        if (IsIgnored()) {
            ++ignored_;
            return true;
        }
        const Level opens = key_->opens;
        if (opens == kNone || IsList(opens) != list) {
            return Fail(list ? "no list is wanted" : "no object is wanted");
        }
        levels_.push_back({opens, 0, key_});
        key_ = list ? Find(opens, "") : nullptr;
        return true;
    }

    bool End() {
        if (ignored_ > 0) {
            --ignored_;
            return true;
        }
        const Open closed = levels_.back();
        levels_.pop_back();
        key_ = closed.key;
        Keep(closed.level);
        return true;
    }

    /// Puts away what has been read of an object that there may be several of.
    void Keep(Level level) {
        if (level == kBill) draft_.has_bill = true;
        if (level == kBreak) draft_.break_weights.push_back(draft_.break_weight);
        if (level == kLine) {
            draft_.lines.push_back(
                {draft_.line_class, draft_.line_rated_as, draft_.line_weight, draft_.line_charge});
        }
        if (level == kRefusal) {
            draft_.refusals.push_back({draft_.place, draft_.text,
                                       static_cast<int32_t>(std::exchange(draft_.code, 0)),
                                       draft_.written, std::exchange(draft_.alternatives, {})});
        }
    }

    bool IsComplete() {
        const Open& open = levels_.back();
        for (const Key& key : kKeys) {
            if (key.level != open.level || key.need == Need::kNothing) continue;
            if ((open.seen & BitOf(key)) != 0) continue;
            key_ = &key;
            return Fail("missing");
        }
        return true;
    }

    /// Keeps what is wrong, with the place: "bill.discount.percent".
    bool Fail(const char* text) {
        std::string place;
        for (const Open& open : levels_) {
            if (!open.key->name.empty()) place += std::string(open.key->name) + ".";
        }
        if (key_ != nullptr) place += key_->name;
        complaint_ = place.empty() ? text : place + ": " + text;
        return false;
    }

    Draft& draft_;
    std::vector<Open> levels_;
    const Key* key_ = &kWhole;  ///< Of the next value; null: nobody reads it.
    int ignored_ = 0;           ///< Levels in something that nobody reads.
    std::string complaint_;
};

/// Goes through a text and leaves behind how far it has come.
struct Cursor {
    using iterator_category = std::forward_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    const char** at;

    reference operator*() const { return **at; }
    Cursor& operator++() {
        ++*at;
        return *this;
    }
    bool operator==(const Cursor& other) const { return *at == *other.at; }
    bool operator!=(const Cursor& other) const { return *at != *other.at; }
};

std::string ReasonOf(const Refusals& refusals) {
    std::string reason;
    for (const Refusal& refusal : refusals) {
        reason += (reason.empty() ? "" : "; ") + RefusalText(refusal);
    }
    return reason;
}

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
        Draft draft;
        Parse(line, draft);
        if (const std::string complaint = Complete(draft); !complaint.empty()) {
            lines_.Break(1, complaint);
        }
        row = std::move(draft);
        return true;
    }

 private:
    void Parse(std::string_view line, Draft& draft) const {
        // The parser takes a zero byte for the end.
        if (const std::size_t zero = line.find('\0'); zero != line.npos) {
            lines_.Break(zero + 1, "a zero byte");
        }
        RowEvents events(draft);
        const char* at = line.data();
        const char* end = at + line.size();
        if (nlohmann::json::sax_parse(Cursor{&at}, Cursor{&end}, &events)) return;
        lines_.Break(static_cast<std::size_t>(std::max<std::ptrdiff_t>(at - line.data(), 1)),
                     events.complaint());
    }

    /// What the keys of a row together must hold. Result: what is wrong.
    static std::string Complete(Draft& draft) {
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
