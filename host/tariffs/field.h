// A field of a binary record, and its text.
//
// Every field has exactly one text, and every text that is taken gives the field's bytes whole.
// What a field holds beside its rule (a letter in a number, junk behind a terminator) is written as
// its bytes in hexadecimal, "hex:30313aff", and taken back so.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// How a field's bytes are written.
enum class Kind {
    kText,      ///< Characters of Windows-1252, padded behind; UTF-8 in the text.
    kPostal,    ///< The same, a postal code; of four digits a spreadsheet has dropped a zero.
    kCode,      ///< The same; of digits that do not fill it, zeros have been dropped.
    kRight,     ///< Characters padded with blanks in front, as numbers are.
    kFlag,      ///< One character, 'Y' or 'N': yes or no; any other character is itself.
    kInt,       ///< Little-endian two's complement of 2 or 4 bytes.
    kUnsigned,  ///< Little-endian of 2 or 4 bytes.
    kFloat,     ///< Binary32, written with the fewest digits that give the same number.
    kDollars,   ///< The same of dollars, written with two decimals at least.
    kCents,     ///< Binary32 of cents, written as dollars.
    kDate,      ///< Eight digits, YYYYMMDD, written YYYY-MM-DD.
};

struct Field {
    const char* name;  ///< Of the column or key. One that lies there `count` times has _1, _2, ...
    std::size_t offset;
    std::size_t width;
    Kind kind;
    const char* meaning;     ///< What it is, its unit, and what the library does with it.
    bool is_needed = false;  ///< Otherwise it may be left out, and its bytes are padding.
    std::size_t count = 1;
    char padding = ' ';  ///< Of texts.
};

/// A field at its place in the record, those that lie there several times one by one.
struct Column {
    std::string name;
    const Field* field;
    std::size_t offset;

    std::string_view In(std::string_view record) const {
        return record.substr(offset, field->width);
    }
};
std::vector<Column> ColumnsOf(std::span<const Field> fields);

/// Whether a kind is of characters that are padded.
bool IsText(Kind kind);

/// What fills a field behind its text, and a text without it.
char PaddingOf(const Field& field);
std::string_view WithoutPadding(std::string_view bytes, char padding);

/// Whether nothing but its bytes can be told of a field: the host's own, or nobody's.
bool IsHosts(const Field& field);

/// Whether nothing stands for a field's bytes: blank texts, and the host's numbers when they are 0.
bool IsLeftOut(const Field& field, std::string_view bytes);

/// The text of a field's bytes.
std::string FieldText(const Field& field, std::string_view bytes);

/// Bytes of a text, or why it gives none.
struct FieldBytes {
    std::optional<std::string> bytes;
    std::string problem;  ///< With bytes: how they differ from what was written.
};
FieldBytes BytesOfText(const Field& field, std::string_view text);

/// The bytes of a field that is left out.
std::string BytesOfNothing(const Field& field);

}  // namespace cwt
