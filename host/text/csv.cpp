#include "text/csv.h"

namespace cwt {
namespace {

enum class Behind { kComma, kLineEnd, kTextEnd, kNoQuote, kOther };

/// A field that begins at a text's start.
struct CsvField {
    std::size_t size;  ///< With its quotes.
    std::size_t next;  ///< Behind what ends it.
    Behind behind;
};

CsvField QuotedField(std::string_view text) {
    std::size_t end = 1;
    for (;; end += 2) {
        end = text.find('"', end);
        if (end == text.npos) return {0, 0, Behind::kNoQuote};
        if (!text.substr(end + 1).starts_with('"')) break;
    }
    ++end;
    const std::string_view rest = text.substr(end);
    if (rest.empty() || rest == "\r") return {end, text.size(), Behind::kTextEnd};
    if (rest[0] == ',') return {end, end + 1, Behind::kComma};
    if (rest[0] == '\n') return {end, end + 1, Behind::kLineEnd};
    if (rest.starts_with("\r\n")) return {end, end + 2, Behind::kLineEnd};
    return {end, 0, Behind::kOther};
}

CsvField FirstField(std::string_view text) {
    if (text.starts_with('"')) return QuotedField(text);
    const std::size_t end = text.find_first_of(",\n");
    if (end == text.npos) return {text.size(), text.size(), Behind::kTextEnd};
    return {end, end + 1, text[end] == ',' ? Behind::kComma : Behind::kLineEnd};
}

std::string Unquoted(std::string_view field) {
    if (!field.starts_with('"')) return std::string(field);
    std::string text;
    text.reserve(field.size());
    for (std::size_t i = 1; i + 1 < field.size(); ++i) {
        text += field[i];
        if (field[i] == '"') ++i;
    }
    return text;
}

std::string_view WithoutLineEnd(std::string_view row) {
    if (row.ends_with('\n')) row.remove_suffix(1);
    if (row.ends_with('\r')) row.remove_suffix(1);
    return row;
}

std::size_t LineEnd(std::string_view text, bool last) {
    const std::size_t end = text.find('\n');
    if (end != text.npos) return end + 1;
    return last && !text.empty() ? text.size() : text.npos;
}

}  // namespace

std::size_t CsvRowEnd(std::string_view text, bool last, std::size_t longest) {
    const bool whole = last && text.size() <= longest;
    text = text.substr(0, longest);
    for (std::size_t start = 0;;) {
        const CsvField field = FirstField(text.substr(start));
        start += field.next;
        switch (field.behind) {
            case Behind::kComma:
                break;
            case Behind::kLineEnd:
                return start;
            case Behind::kTextEnd:
                return whole && !text.empty() ? text.size() : text.npos;
            case Behind::kNoQuote:
                if (!whole && text.size() < longest) return text.npos;
                return LineEnd(text, whole);
            case Behind::kOther:
                return LineEnd(text, whole);
        }
    }
}

std::string SplitCsvRow(std::string_view row, std::vector<std::string>& fields) {
    fields.clear();
    row = WithoutLineEnd(row);
    for (;;) {
        const CsvField field = FirstField(row);
        if (field.behind == Behind::kNoQuote) return "a quoted field is not closed";
        if (field.behind == Behind::kOther) {
            return "something follows the quote that closes a field; a quote in a field is doubled";
        }
        fields.push_back(Unquoted(row.substr(0, field.size)));
        if (field.behind != Behind::kComma) return {};
        row.remove_prefix(field.next);
    }
}

void AppendCsvField(std::string& row, std::string_view field) {
    if (field.find_first_of(",\"\r\n") == field.npos) {
        row += field;
        return;
    }
    row += '"';
    for (const char character : field) {
        row += character;
        if (character == '"') row += '"';
    }
    row += '"';
}

}  // namespace cwt
