#include "commands/help_text.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <cstddef>
#include <regex>
#include <sstream>
#include <string_view>
#include <vector>

#include "commands/value_kinds.h"

namespace cwt {
namespace {

constexpr std::size_t kWidth = 79;
constexpr std::size_t kOptionColumn = 27, kCommandColumn = 12;

/// A text's paragraphs, broken between words. `begun` characters of the first line are taken.
std::string Wrapped(const std::string& text, std::size_t indent, std::size_t begun) {
    std::string lines(indent - begun, ' ');
    std::istringstream paragraphs(text);
    std::size_t column = indent;
    for (std::string paragraph; std::getline(paragraphs, paragraph);) {
        std::istringstream words(paragraph);
        for (std::string word; words >> word;) {
            const bool is_first = column == indent;
            if (!is_first && column + 1 + word.size() > kWidth) {
                lines += '\n' + std::string(indent, ' ');
                column = indent;
            } else if (!is_first) {
                lines += ' ';
                ++column;
            }
            lines += word;
            column += word.size();
        }
        lines += '\n';
        column = indent;
    }
    return lines;
}

/// A name and, in a column of its own, what it does.
std::string Entry(const std::string& name, const std::string& purpose, std::size_t column) {
    const std::string left = "  " + name;
    if (left.size() + 2 <= column) return left + Wrapped(purpose, column, left.size());
    return left + '\n' + Wrapped(purpose, column, 0);
}

std::string Joined(const std::vector<std::string>& names, std::string_view prefix) {
    std::string joined;
    for (const std::string& name : names) {
        joined += fmt::format("{}{}{}", joined.empty() ? "" : ", ", prefix, name);
    }
    return joined;
}

/// What an option wants, as its name is followed by it.
std::string ValueText(const CLI::Option& option) {
    if (!WantsValue(option)) return "";
    const std::vector<std::string> choices = ChoicesOf(option);
    const std::string kind = ValueKindOf(option);
    if (!choices.empty()) return fmt::format(" {}", fmt::join(choices, "|"));
    const bool is_number = kind == "INT" || kind == "UINT";
    return fmt::format(" {}{}", is_number ? "N" : kind, IsList(option) ? "..." : "");
}

/// Its limits, and what it is when it is left out.
std::string TermsOf(const CLI::Option& option) {
    static const std::regex kRange(R"(.* in \[(\S+) - (\S+)\])");
    std::string terms;
    std::smatch range;
    const std::string type = option.get_type_name();
    if (std::regex_match(type, range, kRange)) {
        terms += fmt::format(" From {} to {}.", range[1].str(), range[2].str());
    }
    if (const std::string usual = option.get_default_str(); !usual.empty()) {
        terms += fmt::format(" Default: {}.", usual);
    }
    return terms;
}

}  // namespace

std::string HelpText::make_description(const CLI::App* app) const {
    return Wrapped(app->get_description(), 0, 0);
}

std::string HelpText::make_option(const CLI::Option* option, bool is_positional) const {
    const std::string longs = Joined(option->get_lnames(), "--");
    const std::string shorts = Joined(option->get_snames(), "-");
    const std::string names = shorts.empty() ? longs : shorts + ", " + longs;
    const std::string name =
        is_positional ? make_option_name(option, true) : names + ValueText(*option);
    return Entry(name, option->get_description() + TermsOf(*option), kOptionColumn);
}

std::string HelpText::make_subcommand(const CLI::App* command) const {
    return Entry(command->get_name(), command->get_description(), kCommandColumn);
}

std::string HelpText::make_footer(const CLI::App* app) const {
    return Wrapped(app->get_footer(), 0, 0);
}

}  // namespace cwt
