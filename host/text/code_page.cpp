#include "text/code_page.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace cwt {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kControlPictures = 0x2400;
constexpr char32_t kDelete = 0x7F;
constexpr char32_t kDeletePicture = 0x2421;

/// Bytes 0x80 to 0x9F; the others are Unicode's first 256 characters.
constexpr char32_t kHighCharacters[32] = {
    0x20AC,       kReplacement, 0x201A, 0x0192, 0x201E, 0x2026,       0x2020, 0x2021,
    0x02C6,       0x2030,       0x0160, 0x2039, 0x0152, kReplacement, 0x017D, kReplacement,
    kReplacement, 0x2018,       0x2019, 0x201C, 0x201D, 0x2022,       0x2013, 0x2014,
    0x02DC,       0x2122,       0x0161, 0x203A, 0x0153, kReplacement, 0x017E, 0x0178};

char32_t CharacterOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? kHighCharacters[byte - 0x80] : byte;
}

/// The character as it may be shown. Unicode's second block of control characters (0x80 on) counts
/// as unreadable, and so do those that turn the direction of the text.
char32_t Shown(char32_t character) {
    if (character < 0x20) return kControlPictures + character;
    if (character == kDelete) return kDeletePicture;
    const bool turns = (character >= 0x202A && character <= 0x202E) ||
                       (character >= 0x2066 && character <= 0x2069);
    return turns || (character >= 0x80 && character < 0xA0) ? kReplacement : character;
}

void Append(std::string& text, char32_t character) {
    const auto add = [&](char32_t byte) { text += static_cast<char>(byte); };
    const auto add_tail = [&](unsigned shift) { add(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | character >> 6), add_tail(0);
    } else if (character < 0x10000) {
        add(0xE0 | character >> 12), add_tail(6), add_tail(0);
    } else {
        add(0xF0 | character >> 18), add_tail(12), add_tail(6), add_tail(0);
    }
}

/// Takes the first character off a text that is not empty; U+FFFD, and one byte, when the text does
/// not begin with a well-formed one.
char32_t TakeCharacter(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t tail = first < 0x80 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    constexpr char32_t kLowest[] = {0, 0x80, 0x800, 0x10000};
    char32_t character = tail == 0 ? first : first & (0x3Fu >> tail);
    bool well_formed = first < 0x80 || (first >= 0xC2 && first < 0xF5 && text.size() > tail);
    for (std::size_t i = 1; well_formed && i <= tail; ++i) {
        well_formed = (byte(i) & 0xC0) == 0x80;
        character = character << 6 | (byte(i) & 0x3F);
    }
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    well_formed = well_formed && character >= kLowest[tail] && character < 0x110000 && !surrogate;
    text.remove_prefix(well_formed ? tail + 1 : 1);
    return well_formed ? character : kReplacement;
}

}  // namespace

std::string FromCodePage(std::string_view text) {
    std::string decoded;
    for (const char byte : text)
        Append(decoded, Shown(CharacterOf(static_cast<unsigned char>(byte))));
    return decoded;
}

std::optional<std::string> ToCodePage(std::string_view text) {
    std::string encoded;
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        if (character == kReplacement || character < 0x20 || character == kDelete) {
            return std::nullopt;
        }
        if (character < 0x80 || (character >= 0xA0 && character < 0x100)) {
            encoded += static_cast<char>(character);
            continue;
        }
        const auto* const found = std::ranges::find(kHighCharacters, character);
        if (found == std::end(kHighCharacters)) return std::nullopt;
        encoded += static_cast<char>(0x80 + (found - kHighCharacters));
    }
    return encoded;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = text.size();
        // A well-formed U+FFFD takes three bytes.
        if (TakeCharacter(text) == kReplacement && text.size() == size - 1) return false;
    }
    return true;
}

std::string Printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) Append(shown, Shown(TakeCharacter(text)));
    return shown;
}

}  // namespace cwt
