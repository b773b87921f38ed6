// What --help prints, in 80 columns.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace cwt {

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
