#include "text/json_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace cwt {
namespace {

constexpr std::size_t kIndent = 2;

bool NeedsNoEscape(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

}  // namespace

JsonWriter& JsonWriter::Key(std::string_view name) {
    BeginValue();
    AppendQuoted(name);
    out_ += indented_ ? ": " : ":";
    named_ = true;
    return *this;
}

void JsonWriter::Text(std::string_view text) {
    BeginValue();
    AppendQuoted(text);
}

void JsonWriter::Number(std::int64_t number) {
    Plain(fmt::format_int(number).c_str());
}

void JsonWriter::Plain(std::string_view value) {
    BeginValue();
    out_ += value;
}

void JsonWriter::Open(char bracket) {
    BeginValue();
    out_ += bracket;
    ++depth_;
    first_ = true;
}

void JsonWriter::Close(char bracket) {
    --depth_;
    if (!first_) BeginLine();
    out_ += bracket;
    first_ = false;
}

void JsonWriter::BeginValue() {
    if (!named_ && depth_ > 0) {
        if (!first_) out_ += ',';
        BeginLine();
    }
    named_ = false;
    first_ = false;
}

void JsonWriter::BeginLine() {
    if (!indented_) return;
    out_ += '\n';
    out_.append(kIndent * static_cast<std::size_t>(depth_), ' ');
}

void JsonWriter::AppendQuoted(std::string_view text) {
    if (!std::ranges::all_of(text, NeedsNoEscape)) {
        out_ += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        return;
    }
    out_ += '"';
    out_ += text;
    out_ += '"';
}

std::string DocumentOf(const nlohmann::ordered_json& json) {
    return json.dump(kIndent, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

}  // namespace cwt
