// JSON written as text, without a document in between.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace cwt {

/// Writes one JSON value behind a text: compact, or indented by two blanks a level.
class JsonWriter {
 public:
    enum Layout { kCompact, kIndented };

    JsonWriter(std::string& out, Layout layout) : out_(out), indented_(layout == kIndented) {}

    /// An object or array of what `write` writes.
    template <class Write>
    void Object(Write write) {
        Open('{');
        write();
        Close('}');
    }
    template <class Write>
    void Array(Write write) {
        Open('[');
        write();
        Close(']');
    }

    /// The name of the member that is written next.
    JsonWriter& Key(std::string_view name);

    /// A text in UTF-8; what is none of it becomes U+FFFD.
    void Text(std::string_view text);
    void TextOrNull(std::string_view text) { text.empty() ? Null() : Text(text); }
    void Number(std::int64_t number);
    void Flag(bool flag) { Plain(flag ? "true" : "false"); }
    void Null() { Plain("null"); }

 private:
    void Plain(std::string_view value);
    void Open(char bracket);
    void Close(char bracket);
    void BeginValue();
    void BeginLine();
    void AppendQuoted(std::string_view text);

    std::string& out_;
    bool indented_;
    int depth_ = 0;
    bool first_ = true;  ///< Nothing stands in the innermost object or array.
    bool named_ = false;
};

/// A document as it is printed: what `write` writes, indented, with an LF behind it.
template <class Write>
std::string DocumentOf(Write write) {
    std::string text;
    JsonWriter json(text, JsonWriter::kIndented);
    write(json);
    return text + '\n';
}

/// The same of a JSON value.
std::string DocumentOf(const nlohmann::ordered_json& json);

}  // namespace cwt
