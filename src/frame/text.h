// Fixed-width text fields: what stands in them, and how a text is laid into one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace hundredweight {

/// ASCII alone counts, whatever the host's locale is.
inline bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}
inline bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

/// What the trimming of texts and the reading of numbers skip.
inline constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
inline bool IsWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// All bytes of a field.
template <std::size_t Size>
std::string_view WholeField(const char (&field)[Size]) {
    return {field, Size};
}

/// The text of a field of `size` bytes, up to its first zero byte if it has one.
inline std::string_view TerminatedText(const char* field, std::size_t size) {
    return {field, static_cast<std::size_t>(std::find(field, field + size, '\0') - field)};
}

template <std::size_t Size>
std::string_view TerminatedText(const char (&field)[Size]) {
    return TerminatedText(field, Size);
}

/// Copies as much of a text as the field holds; the field's other bytes stay as they are.
template <std::size_t Size>
void CopyText(char (&field)[Size], std::string_view text) {
    std::memcpy(field, text.data(), std::min(text.size(), Size));
}

/// Copies a text and a terminator, cutting the text so that the terminator fits the field.
template <std::size_t Size>
void PutText(char (&field)[Size], std::string_view text) {
    const std::size_t length = std::min(text.size(), Size - 1);
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

template <std::size_t Size>
void FillField(char (&field)[Size], char filler) {
    std::memset(field, filler, Size);
}

}  // namespace hundredweight
