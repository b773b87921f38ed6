#include "header_text.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace languages {
namespace {

using Kind = HeaderPart::Kind;

std::string WithoutDirectives(const std::filesystem::path& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error(path.string() + ": cannot be read");
    std::string text, line;
    while (std::getline(file, line)) {
        // The opening of a C++ linkage is for the preprocessor too.
        if (line.starts_with('#') || line == "extern \"C\" {") continue;
        text += line + '\n';
    }
    return text;
}

std::string CommentText(std::string_view comment) {
    std::string lines;
    std::istringstream in{std::string(comment)};
    for (std::string line; std::getline(in, line);) {
        const std::size_t star = line.find_first_not_of(' ');
        if (!lines.empty() && star != std::string::npos && line[star] == '*') line[star] = ' ';
        lines += line + '\n';
    }
    return InOneLine(lines);
}

void AddComment(std::string_view comment, std::vector<HeaderPart>& parts) {
    // Without its stars and slashes.
    comment = comment.substr(2, comment.size() - 4);
    Kind kind = Kind::kSection;
    if (comment.starts_with("*<")) {
        kind = Kind::kBehind;
        comment.remove_prefix(2);
    } else if (comment.starts_with('*')) {
        kind = Kind::kBefore;
        comment.remove_prefix(1);
    }
    const std::string text = CommentText(comment);
    if (text != "clang-format off" && text != "clang-format on") parts.push_back({kind, text});
}

void AddCode(std::string_view code, std::vector<HeaderPart>& parts) {
    while (!code.empty()) {
        const std::size_t gap = code.find("\n\n");
        const std::size_t end = code.find_first_of(";{");
        if (gap < end && InOneLine(code.substr(0, gap)).empty()) {
            parts.push_back({Kind::kGap, ""});
            code.remove_prefix(gap + 2);
            continue;
        }
        const std::size_t size = std::min(end, code.size() - 1) + 1;
        const std::string text = InOneLine(code.substr(0, size));
        if (!text.empty()) parts.push_back({Kind::kCode, text});
        code.remove_prefix(size);
    }
}

}  // namespace

std::string InOneLine(std::string_view text) {
    std::istringstream in{std::string(text)};
    std::string line;
    for (std::string word; in >> word;) line += (line.empty() ? "" : " ") + word;
    return line;
}

std::vector<HeaderPart> ReadHeader(const std::filesystem::path& path) {
    const std::string text = WithoutDirectives(path);
    std::vector<HeaderPart> parts;
    for (std::size_t place = 0; place < text.size();) {
        const std::size_t comment = std::min(text.find("/*", place), text.size());
        AddCode(std::string_view(text).substr(place, comment - place), parts);
        if (comment == text.size()) break;
        const std::size_t end = text.find("*/", comment) + 2;
        AddComment(std::string_view(text).substr(comment, end - comment), parts);
        place = end;
    }
    return parts;
}

}  // namespace languages
