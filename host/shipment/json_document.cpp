#include "shipment/json_document.h"

#include <fmt/core.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "text/code_page.h"

namespace cwt {
namespace {

using JsonValue = nlohmann::json;

constexpr std::size_t kLongestKey = 64;  // That is shown of one.

/// Watches a parser for keys that it has met before in the same object.
class RepeatedKeys {
 public:
    explicit RepeatedKeys(Refusals& refusals) : refusals_(refusals) {}

    void Note(JsonValue::parse_event_t event, const JsonValue& parsed) {
        switch (event) {
            case JsonValue::parse_event_t::object_start:
            case JsonValue::parse_event_t::array_start:
                levels_.push_back({.is_array = event == JsonValue::parse_event_t::array_start});
                break;
            case JsonValue::parse_event_t::object_end:
            case JsonValue::parse_event_t::array_end:
                levels_.pop_back();
                CountEntry();
                break;
            case JsonValue::parse_event_t::key:
                levels_.back().key = parsed.get_ref<const std::string&>();
                if (!levels_.back().keys.insert(levels_.back().key).second) {
                    refusals_.push_back({Place(), "the key is there twice"});
                }
                break;
            case JsonValue::parse_event_t::value:
                CountEntry();
                break;
        }
    }

 private:
    struct Level {
        bool is_array = false;
        std::size_t entries = 0;
        std::string key = {};
        std::set<std::string> keys = {};
    };

    void CountEntry() {
        if (!levels_.empty()) ++levels_.back().entries;
    }

    std::string Place() const {
        std::string place;
        for (const Level& level : levels_) {
            if (level.is_array) {
                place += fmt::format("[{}]", level.entries);
            } else {
                if (!place.empty()) place += '.';
                place += Printable(level.key.substr(0, kLongestKey));
                if (level.key.size() > kLongestKey) place += "...";
            }
        }
        return place;
    }

    Refusals& refusals_;
    std::vector<Level> levels_;
};

struct TooDeep {};
struct TooMany {};

/// Where the parser gave up, counted from 1.
std::string LineAndColumn(std::string_view text, std::size_t bytes_read) {
    const std::string_view before = text.substr(0, bytes_read > 0 ? bytes_read - 1 : 0);
    const auto line = 1 + std::ranges::count(before, '\n');
    const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
    return fmt::format("line {}, column {}", line, column);
}

}  // namespace

JsonValue ParseJson(std::string_view text, Refusals& refusals) {
    constexpr int kDeepest = 32;  // Levels; a shipment has three.
    constexpr int kMost = 2000;   // Keys and values; a shipment has some eighty.
    // The parser takes a zero byte for the end.
    if (const std::size_t zero = text.find('\0'); zero != text.npos) {
        refusals = {{LineAndColumn(text, zero + 1), "a zero byte"}};
        return nullptr;
    }
    RepeatedKeys repeated(refusals);
    int count = 0;
    try {
        return JsonValue::parse(text.begin(), text.end(),
                                [&](int depth, JsonValue::parse_event_t event, JsonValue& parsed) {
                                    if (depth > kDeepest) throw TooDeep();
                                    if (++count > kMost) throw TooMany();
                                    repeated.Note(event, parsed);
                                    return true;
                                });
    } catch (const TooDeep&) {
        refusals = {{"", "too many levels of lists and objects"}};
    } catch (const TooMany&) {
        refusals = {{"", "more keys and values than any shipment has"}};
    } catch (const JsonValue::parse_error& error) {
        refusals = {
            {LineAndColumn(text, error.byte), "this is no JSON in UTF-8, or it ends too early"}};
    } catch (const JsonValue::out_of_range&) {
        refusals = {{"", "a number is too large for JSON"}};
    }
    return nullptr;
}

}  // namespace cwt
