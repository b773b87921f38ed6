#include "commands/typed_line.h"

#include <algorithm>
#include <cstddef>

#include "commands/value_kinds.h"

namespace cwt {
namespace {

/// Goes through the words as CLI11 does, and stops at nothing that it would complain about.
class Reader {
 public:
    explicit Reader(const CLI::App& program) : program_(program) { line_.command = &program; }

    void Take(const std::string& word) {
        if (line_.awaited != nullptr) {
            AddValue(line_.awaited, word);
            line_.awaited = nullptr;
        } else if (IsOption(word)) {
            TakeOption(word);
        } else if (word == "--" && !options_ended_) {
            options_ended_ = true;
        } else if (line_.command == &program_) {
            line_.command = CommandOf(word);
        } else if (const CLI::Option* const positional = NextPositional()) {
            line_.given.push_back(positional);
            AddValue(positional, word);
        }
    }

    TypedLine End(const std::string& last) {
        line_.last = last;
        if (line_.awaited != nullptr || line_.command == nullptr) return line_;
        const std::size_t equals = last.find('=');
        if (IsOption(last) && equals != last.npos) {
            line_.awaited = OptionOf(last.substr(0, equals));
            line_.last = last.substr(equals + 1);
        } else if (!last.starts_with('-') || options_ended_) {
            line_.awaited = NextPositional();
        }
        return line_;
    }

 private:
    bool IsOption(const std::string& word) const {
        return !options_ended_ && word.size() > 1 && word.starts_with('-') && word != "--";
    }

    /// "--name", "--name=value", "-n" or "-nvalue".
    void TakeOption(const std::string& word) {
        constexpr std::size_t kShort = 2;
        const bool is_long = word.starts_with("--");
        const std::size_t end = is_long ? word.find('=') : kShort;
        const CLI::Option* const option = OptionOf(word.substr(0, end));
        if (option == nullptr) return;
        line_.given.push_back(option);
        if (!WantsValue(*option)) return;
        if (end >= word.size()) {
            line_.awaited = option;
        } else {
            AddValue(option, word.substr(is_long ? end + 1 : end));
        }
    }

    void AddValue(const CLI::Option* option, const std::string& text) {
        line_.values.push_back({option, text});
    }

    const CLI::Option* OptionOf(const std::string& name) const {
        return line_.command == nullptr ? nullptr : line_.command->get_option_no_throw(name);
    }

    const CLI::App* CommandOf(const std::string& name) const {
        for (const CLI::App* command : program_.get_subcommands({})) {
            if (command->get_name() == name) return command;
        }
        return nullptr;
    }

    const CLI::Option* NextPositional() const {
        if (line_.command == nullptr) return nullptr;
        for (const CLI::Option* option : line_.command->get_options()) {
            const bool is_open = IsList(*option) || !line_.Has(option);
            if (option->get_positional() && is_open && line_.Allows(*option)) return option;
        }
        return nullptr;
    }

    const CLI::App& program_;
    TypedLine line_;
    bool options_ended_ = false;
};

}  // namespace

bool TypedLine::Has(const CLI::Option* option) const {
    return std::ranges::find(given, option) != given.end();
}

bool TypedLine::Allows(const CLI::Option& option) const {
    return std::ranges::none_of(option.get_excludes(),
                                [&](const CLI::Option* other) { return Has(other); });
}

std::vector<std::string> TypedLine::ValuesOf(const std::string& kind) const {
    std::vector<std::string> texts;
    for (const TypedValue& value : values) {
        if (ValueKindOf(*value.option) == kind) texts.push_back(value.text);
    }
    return texts;
}

TypedLine ReadTypedLine(const CLI::App& program, const std::vector<std::string>& words) {
    Reader reader(program);
    for (std::size_t i = 0; i + 1 < words.size(); ++i) reader.Take(words[i]);
    return reader.End(words.empty() ? "" : words.back());
}

}  // namespace cwt
