// A public header as its words: comments, and the code between them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace languages {

struct HeaderPart {
    enum class Kind {
        kCode,     ///< A declaration up to its semicolon or opening brace, or a closing brace.
        kBefore,   ///< A comment on what follows.
        kBehind,   ///< A comment on what it stands behind.
        kSection,  ///< A comment on all that follows up to the next gap.
        kGap,      ///< An empty line.
    };
    Kind kind;
    std::string text;  ///< In one line.
};

/// The parts of a header in order. Preprocessor lines are left out.
std::vector<HeaderPart> ReadHeader(const std::filesystem::path& path);

/// The words of a text, separated by single blanks.
std::string InOneLine(std::string_view text);

}  // namespace languages
