// A command line that is still being typed.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace cwt {

struct TypedValue {
    const CLI::Option* option;
    std::string text;
};

struct TypedLine {
    const CLI::App* command =
        nullptr;  ///< The one that is named, the program before that; null: unknown.
    std::vector<const CLI::Option*> given;  ///< Options and positionals.
    std::vector<TypedValue> values;
    const CLI::Option* awaited =
        nullptr;       ///< Whose value the last word is; null when it is a name.
    std::string last;  ///< The last word, or the value that it has behind a =.

    bool Has(const CLI::Option* option) const;
    /// Whether an option goes with those that are given.
    bool Allows(const CLI::Option& option) const;
    /// The values given to options that want one of a kind.
    std::vector<std::string> ValuesOf(const std::string& kind) const;
};

/// Reads the words behind the program's name. The last one, which may be empty, is being typed.
TypedLine ReadTypedLine(const CLI::App& program, const std::vector<std::string>& words);

}  // namespace cwt
