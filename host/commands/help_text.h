// What --help prints, in 80 columns.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace cwt {

/// The values that an option is limited to; empty when they are no list.
std::vector<std::string> ChoicesOf(const CLI::Option& option);

/// What an option wants, in one word: "FILE". Of an option with choices it is a word of CLI11's.
std::string ValueKindOf(const CLI::Option& option);

/// Names on the left, what they do beside them. That two options exclude each other is left to what
/// they say of themselves, and to the complaint about both.
class HelpText : public CLI::Formatter {
 public:
    std::string make_description(const CLI::App* app) const override;
    std::string make_option(const CLI::Option* option, bool is_positional) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_footer(const CLI::App* app) const override;
};

}  // namespace cwt
