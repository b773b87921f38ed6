#include "server/http/head.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>

#include "text/letters.h"

namespace cwt {
namespace {

constexpr std::size_t kLongestLine = 8000;  // Within what the library takes.
constexpr std::size_t kMostFields = 100;
constexpr std::string_view kLineEnd = "\r\n";

[[noreturn]] void Refuse(const std::string& detail) {
    throw BadRequest(ProblemKind::kBadRequest, detail);
}

bool IsTokenCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

bool IsToken(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, IsTokenCharacter);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::string_view TakeTo(std::string_view& text, std::string_view end) {
    const std::size_t length = text.find(end);
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length == text.npos ? text.size() : length + end.size());
    return taken;
}

void ReadRequestLine(std::string_view line, Head& head) {
    constexpr std::string_view kMethods[] = {"GET",   "HEAD",   "POST",   "PUT",
                                             "PATCH", "DELETE", "OPTIONS"};
    head.method = TakeTo(line, " ");
    head.target = TakeTo(line, " ");
    const auto is_visible = [](char c) { return c > ' ' && c < '\x7f'; };
    if (!head.target.starts_with('/') || !std::ranges::all_of(head.target, is_visible) ||
        (line != "HTTP/1.1" && line != "HTTP/1.0")) {
        Refuse("The request line is not of the form METHOD /path HTTP/1.1");
    }
    if (std::ranges::find(kMethods, head.method) == std::end(kMethods)) {
        Refuse("The method is not known");
    }
    head.is_newest = line.ends_with('1');
}

void ReadField(std::string_view line, Head& head) {
    const std::string_view name = line.substr(0, line.find(':'));
    if (name.size() == line.size() || !IsToken(name)) {
        Refuse("A header field is not of the form Name: value");
    }
    const std::string_view value = Trimmed(line.substr(name.size() + 1));
    for (const char c : value) {
        const auto code = static_cast<unsigned char>(c);
        if ((code < ' ' && c != '\t') || c == '\x7f') {
            Refuse("A header field holds a control character");
        }
    }
    head.fields.emplace_back(LowerCase(name), value);
}

/// What may stand there once alone.
void RequireOnce(const Head& head) {
    for (const std::string_view name :
         {"host", "content-length", "transfer-encoding", "content-type", "content-encoding",
          "authorization", "origin", "expect"}) {
        const auto is_it = [&](const auto& field) { return field.first == name; };
        if (std::ranges::count_if(head.fields, is_it) > 1) {
            Refuse(fmt::format("The header has {} twice", name));
        }
    }
    if (head.is_newest && head.Find("host").empty()) Refuse("The header has no Host");
}

void ReadLength(Head& head) {
    const auto has = [&](std::string_view name) {
        return std::ranges::any_of(head.fields,
                                   [&](const auto& field) { return field.first == name; });
    };
    if (has("transfer-encoding")) {
        if (has("content-length") || !head.is_newest ||
            LowerCase(head.Find("transfer-encoding")) != "chunked") {
            Refuse("Of transfer codings chunked is taken, alone and without Content-Length");
        }
        head.is_chunked = true;
    } else if (has("content-length")) {
        const std::string_view text = head.Find("content-length");
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, head.length);
        if (text.empty() || read.ec != std::errc() || read.ptr != end) {
            Refuse("Content-Length is no number");
        }
    }
    const std::string_view coding = head.Find("content-encoding");
    if (!coding.empty() && coding != "identity") {
        throw BadRequest(ProblemKind::kWrongType, "A body is taken as it is, not packed");
    }
    if (head.has_body() && (head.method == "GET" || head.method == "HEAD")) {
        Refuse("A request to read has no body");
    }
}

void ReadConnection(Head& head) {
    std::string_view expected = head.Find("expect");
    if (!expected.empty() && LowerCase(expected) != "100-continue") {
        Refuse("What is expected is not known");
    }
    head.ends_connection = !head.is_newest;
    for (const auto& [name, value] : head.fields) {
        if (name != "connection") continue;
        const std::string list = LowerCase(value);
        for (std::string_view rest = list; !rest.empty();) {
            if (Trimmed(TakeTo(rest, ",")) == "close") head.ends_connection = true;
        }
    }
}

}  // namespace

std::string_view Head::Find(std::string_view name) const {
    const auto found = std::ranges::find(
        fields, name, [](const auto& field) { return std::string_view(field.first); });
    return found == fields.end() ? std::string_view() : found->second;
}

std::string Head::ForLibrary() const {
    std::string text = fmt::format("{} {} HTTP/1.{}\r\n", method, target, is_newest ? 1 : 0);
    for (const char* const name : {"content-type", "content-length", "transfer-encoding"}) {
        if (const auto value = Find(name); !value.empty()) {
            text += fmt::format("{}: {}\r\n", name, value);
        }
    }
    if (!Find("expect").empty() && is_newest) text += "expect: 100-continue\r\n";
    if (ends_connection) text += "connection: close\r\n";
    return text + "\r\n";
}

Head ReadHead(std::string_view text) {
    Head head;
    bool is_first = true;
    while (!text.empty()) {
        const std::string_view line = TakeTo(text, kLineEnd);
        if (line.find_first_of(std::string_view("\r\n\0", 3)) != line.npos) {
            Refuse("A line of the header ends in another way than by CR LF");
        }
        if (line.size() > kLongestLine || head.fields.size() > kMostFields) {
            throw BadRequest(ProblemKind::kHeadersTooLarge,
                             fmt::format("The header has at most {} fields, and lines of {} bytes",
                                         kMostFields, kLongestLine));
        }
        if (is_first) {
            ReadRequestLine(line, head);
        } else if (!line.empty()) {
            ReadField(line, head);
        }
        is_first = false;
    }
    RequireOnce(head);
    ReadLength(head);
    ReadConnection(head);
    return head;
}

}  // namespace cwt
