#include "tariffs/settings_document.h"

#include <fmt/core.h>

#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "text/nearest_word.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

/// A text's characters, counted as they are read.
class CountedCharacters {
 public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountedCharacters(const char* at, std::size_t* read) : at_(at), read_(read) {}
    const char& operator*() const { return *at_; }
    CountedCharacters& operator++() {
        ++at_;
        ++*read_;
        return *this;
    }
    CountedCharacters operator++(int) {
        const CountedCharacters before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountedCharacters& other) const { return at_ == other.at_; }
    bool operator!=(const CountedCharacters& other) const { return at_ != other.at_; }

 private:
    const char* at_;
    std::size_t* read_;
};

}  // namespace

/// Takes the document's values as the parser meets them.
class SettingsHandler : public nlohmann::json_sax<nlohmann::json> {
 public:
    SettingsHandler(std::string_view text, SettingsDocument& document, Findings& findings)
        : text_(text), document_(document), findings_(findings) {}

    std::size_t read = 0;  ///< Characters that the parser has taken.

    bool null() override {
        return Refuse(place_, "null is no value; what is left out is padding, or not there");
    }
    bool boolean(bool value) override {
        return Value(value ? "yes" : "no", Json::value_t::boolean);
    }
    bool number_integer(number_integer_t value) override {
        return Value(std::to_string(value), Json::value_t::number_integer);
    }
    bool number_unsigned(number_unsigned_t value) override {
        return Value(std::to_string(value), Json::value_t::number_unsigned);
    }
    bool number_float(number_float_t, const string_t& written) override {
        return Value(written, Json::value_t::number_float);
    }
    bool string(string_t& value) override { return Value(value, Json::value_t::string); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override {
        if (++depth_ <= 2) return depth_ == 1 || BeginSection();
        return Refuse(place_, "a section has no sections of its own");
    }
    bool end_object() override {
        if (--depth_ == 1) section_ = nullptr;
        key_.clear();
        return depth_ > 0 || RequireTopKeys();
    }
    bool start_array(std::size_t) override {
        return Refuse(place_, "is a list; none is read here");
    }
    bool end_array() override { return true; }
    bool key(string_t& name) override {
        key_ = name;
        place_ = PlaceBefore(read - std::min(read, name.size() + 2));
        return true;
    }
    bool parse_error(std::size_t position, const std::string&,
                     const Json::exception& error) override {
        constexpr int kNumberTooLarge = 406;
        key_.clear();
        return Refuse(PlaceBefore(position > 0 ? position - 1 : 0),
                      error.id == kNumberTooLarge
                          ? "the number is too large"
                          : "this is no JSON in UTF-8, or it ends too early");
    }

 private:
    /// Places ascend, so that each line is counted once.
    Place PlaceBefore(std::size_t position) {
        const auto starts = [](char byte) {
            return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;
        };
        for (; counted_ < std::min(position, text_.size()); ++counted_) {
            if (starts(text_[counted_])) ++counted_place_.column;
            if (text_[counted_] != '\n') continue;
            ++counted_place_.line;
            counted_place_.column = 1;
        }
        return counted_place_;
    }
    bool RequireTopKeys() {
        for (const char* wanted : {"schema", "set"}) {
            if (!top_keys_.contains(wanted)) {
                return Refuse({kSettingsFile, 1, 1}, fmt::format("the key {} is missing", wanted));
            }
        }
        return true;
    }
    bool Refuse(const Place& place, const std::string& text) {
        findings_.Refuse(place, key_.empty() ? text : fmt::format("{}: {}", key_, text));
        return false;
    }
    bool BeginSection() {
        const auto [entry, is_new] = document_.sections_.try_emplace(key_);
        if (!is_new) return Refuse(place_, "the section is there twice");
        entry->second.place = place_;
        section_ = &entry->second.settings;
        return true;
    }
    bool Value(const std::string& text, Json::value_t type) {
        if (section_ != nullptr) {
            const auto form = type == Json::value_t::boolean  ? Setting::kTruth
                              : type == Json::value_t::string ? Setting::kText
                                                              : Setting::kNumber;
            if (!section_->try_emplace(key_, Setting{text, place_, form}).second) {
                return Refuse(place_, "the key is there twice");
            }
            return true;
        }
        if (depth_ != 1) return Refuse({kSettingsFile, 1, 1}, "an object is wanted");
        if (!top_keys_.insert(key_).second) return Refuse(place_, "the key is there twice");
        if (key_ == "set" && type == Json::value_t::string) {
            document_.set_ = text;
            document_.set_place_ = place_;
        } else if (key_ != "schema") {
            return Refuse(place_, "is no section: an object of settings is wanted");
        } else if (text != kSettingsSchema) {
            return Refuse(place_, fmt::format("\"{}\" is wanted", kSettingsSchema));
        }
        return true;
    }

    std::string_view text_;
    SettingsDocument& document_;
    Findings& findings_;
    int depth_ = 0;
    std::string key_;
    Place place_ = {kSettingsFile, 1, 1};
    std::size_t counted_ = 0;  ///< Bytes up to counted_place_.
    Place counted_place_ = {kSettingsFile, 1, 1};
    std::set<std::string> top_keys_;
    std::map<std::string, Setting>* section_ = nullptr;
};

SettingsDocument::SettingsDocument(std::string_view text, Findings& findings) {
    // The parser takes a zero byte for the end.
    if (text.find('\0') != text.npos) {
        const auto line = 1 + std::ranges::count(text.substr(0, text.find('\0')), '\n');
        findings.Refuse({kSettingsFile, static_cast<std::size_t>(line), 0},
                        "has a zero byte: JSON in UTF-8 is wanted");
        return;
    }
    SettingsHandler handler(text, *this, findings);
    const CountedCharacters begin(text.data(), &handler.read);
    const CountedCharacters end(text.data() + text.size(), &handler.read);
    nlohmann::json::sax_parse(begin, end, &handler);
}

std::map<std::string, Setting>* SettingsDocument::Section(const std::string& name) {
    const auto found = sections_.find(name);
    return found == sections_.end() ? nullptr : &found->second.settings;
}

Place SettingsDocument::place_of(const std::string& section) const {
    const auto found = sections_.find(section);
    return found == sections_.end() ? Place{kSettingsFile} : found->second.place;
}

void SettingsDocument::TellUnused(Findings& findings) const {
    std::vector<std::string_view> known;
    for (const Family& family : Families()) {
        if (family.shape == Shape::kSettings) known.push_back(family.text);
    }
    for (const auto& [name, section] : sections_) {
        if (std::ranges::find(known, name) != known.end()) continue;
        const auto nearest = NearestWord(name, known);
        findings.Warn(section.place,
                      fmt::format("nobody reads a section \"{}\"{}", name,
                                  nearest.empty() ? "" : "; is " + nearest[0] + " meant?"));
    }
}

}  // namespace cwt
