#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <utility>

#include "bill/money.h"
#include "comparison/row_keys.h"

namespace cwt {
namespace {

/// The events of a parser, as it calls them.
class RowEvents {
 public:
    explicit RowEvents(RowDraft& draft) : draft_(draft) {}

    const std::string& complaint() const { return complaint_; }

    bool null() {
        if (IsIgnored() || key_->need == Presence::kValueOrNull) return true;
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
        key_ = FindKey(levels_.back().level, name);
        if (key_ == nullptr) return true;
        uint64_t& seen = levels_.back().seen;
        if ((seen & BitOf(*key_)) != 0) return Fail("the key is there twice");
        seen |= BitOf(*key_);
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::json::exception& /*error*/) {
        complaint_ = "this is no JSON in UTF-8, or it ends too early";
        return false;
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
        key_ = list ? FindKey(opens, "") : nullptr;
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
            if (key.level != open.level || key.need == Presence::kNothing) continue;
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

    RowDraft& draft_;
    std::vector<Open> levels_;
    const Key* key_ = &kWholeRow;  ///< Of the next value; null: nobody reads it.
    int ignored_ = 0;              ///< Levels in something that nobody reads.
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

}  // namespace

std::optional<RowFault> ParseRow(std::string_view text, RowDraft& draft) {
    // The parser takes a zero byte for the end.
    if (const std::size_t zero = text.find('\0'); zero != text.npos) {
        return RowFault{zero + 1, "a zero byte"};
    }
    RowEvents events(draft);
    const char* at = text.data();
    const char* end = at + text.size();
    if (nlohmann::json::sax_parse(Cursor{&at}, Cursor{&end}, &events)) return std::nullopt;
    return RowFault{static_cast<std::size_t>(std::max<std::ptrdiff_t>(at - text.data(), 1)),
                    events.complaint()};
}

}  // namespace cwt
