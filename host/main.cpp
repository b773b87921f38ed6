// cwt: rates shipments and shows tariff sets from the command line.
#include <fmt/core.h>
#include <hundredweight/platform.h>
#include <hundredweight/version.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/commands.h"
#include "commands/help_text.h"
#include "session/messages.h"
#include "session/partner_library.h"
#include "text/code_page.h"
#include "text/nearest_word.h"

namespace {

const char* const kExitCodes =
    "Exit codes: 0 done; 1 a shipment is refused, or what was asked for is not known; 2 broken "
    "data, "
    "partner library or command line, or output that could not be written.\nEvery failure is a "
    "line on standard "
    "error, with the library's code; \"cwt message CODE\" tells what to do.";

/// The names that a command, or the program, knows and that begin like `written`.
std::vector<std::string> KnownNames(const CLI::App& app, const std::string& written) {
    std::vector<std::string> names;
    if (written.starts_with("-")) {
        for (const CLI::Option* option : app.get_options()) {
            for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
        }
    } else {
        for (const CLI::App* command : app.get_subcommands({}))
            names.push_back(command->get_name());
    }
    return names;
}

/// What is wrong with a command line, with the nearest name in the place of one that nobody knows.
std::string Complaint(const CLI::App& app, const CLI::ParseError& error) {
    std::string text = error.what();
    std::replace(text.begin(), text.end(), '\n', ' ');
    const auto chosen = app.get_subcommands();
    const CLI::App& command = chosen.empty() ? app : *chosen.front();
    const std::vector<std::string> extras = command.remaining();
    const bool unknown = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr || chosen.empty();
    if (!unknown || extras.empty()) return text + "; --help tells more";
    const std::vector<std::string> names = KnownNames(command, extras.front());
    const std::vector<std::string_view> known(names.begin(), names.end());
    const std::vector<std::string> nearest = cwt::NearestWord(extras.front(), known);
    return "unknown " + std::string(chosen.empty() ? "command" : "argument") + " \"" +
           extras.front() + "\"" + (nearest.empty() ? "" : ", did you mean " + nearest[0] + "?");
}

/// The word that the shells' scripts ask by what can be typed. It is no command for people.
constexpr std::string_view kComplete = "complete";

/// "cwt help rate" is "cwt rate --help".
constexpr std::string_view kHelp = "help";

struct Command {
    std::string_view name;
    void (*add)(CLI::App& app, int& exit_code);
};

constexpr Command kCommands[] = {
    {"rate", cwt::AddRate},       {"check", cwt::AddCheck},   {"batch", cwt::AddBatch},
    {"inspect", cwt::AddInspect}, {"states", cwt::AddStates}, {"profiles", cwt::AddProfiles},
    {"compare", cwt::AddCompare}, {"export", cwt::AddExport}, {"build", cwt::AddBuild},
    {"diff", cwt::AddDiff},       {"sample", cwt::AddSample}, {"message", cwt::AddMessage},
#ifdef HWT_SERVE
    {"serve", cwt::AddServe},
#endif
};

const Command* CommandOf(std::string_view name) {
    const auto* const found = std::ranges::find(kCommands, name, &Command::name);
    return found == std::end(kCommands) ? nullptr : found;
}

/// Only the command that is named, when one is: to set up the others takes longer than to rate a
/// shipment.
void AddCommands(CLI::App& app, std::string_view named, int& exit_code) {
    if (const Command* const command = CommandOf(named)) return command->add(app, exit_code);
    for (const Command& command : kCommands) command.add(app, exit_code);
}

/// Of the command, of the library that it runs with, and of what both were built from.
std::string Versions() {
    return fmt::format(
        "cwt (Hundredweight) {}\nlibhundredweight {}\n"
        "CLI11 {}, fmt {}.{}.{}, nlohmann-json {}.{}.{}",
        HWT_VERSION, HundredweightVersion(), CLI11_VERSION, FMT_VERSION / 10000,
        FMT_VERSION / 100 % 100, FMT_VERSION % 100, NLOHMANN_JSON_VERSION_MAJOR,
        NLOHMANN_JSON_VERSION_MINOR, NLOHMANN_JSON_VERSION_PATCH);
}

int Run(int argc, char** argv) {
    CLI::App app("Rates less-than-truckload shipments.", "cwt");
    const auto help = std::make_shared<cwt::HelpText>();
    help->label("Positionals", "Arguments");
    app.formatter(help);
    app.set_help_flag("-h,--help", "Print this help and exit.");
    app.set_version_flag("--version", Versions,
                         "Print the versions of cwt and its parts and exit.");
    app.footer(kExitCodes);
    app.require_subcommand(1);
    app.allow_windows_style_options(false);  // "/data" is a directory on every system.
    int exit_code = cwt::kDone;
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    if (!words.empty() && words[0] == kComplete) {
        words.erase(words.begin());
        // The names behind help are those of commands.
        if (words.size() == 2 && words[0] == kHelp) words.erase(words.begin());
        AddCommands(app, words.size() > 1 ? words[0] : "", exit_code);
        cwt::Complete(app, words);
        return cwt::kDone;
    }
    if (!words.empty() && words[0] == kHelp) {
        std::erase(words, kHelp);
        // Of a name that nobody knows the parser complains.
        if (words.empty() || CommandOf(words[0]) != nullptr) words.emplace_back("--help");
    }
    AddCommands(app, words.empty() ? "" : words[0], exit_code);
    std::ranges::reverse(words);  // The parser takes them from the back.
    try {
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) throw cwt::Broken(Complaint(app, error));
        std::ostringstream text;
        app.exit(error, text, text);
        cwt::Print(text.str());
    }
    return exit_code;
}

bool is_finished = false;

/// A partner library may end the program, and would do so with an exit code of its own.
void GuardExit() {
    if (is_finished) return;
    cwt::ErrorOutput::GiveBack();
    cwt::Say("a partner library has ended the program");
    std::_Exit(cwt::kBroken);
}

}  // namespace

int main(int argc, char** argv) {
    int exit_code = cwt::kDone;
    try {
        cwt::CollectMessageBoxes();
        std::atexit(GuardExit);
        exit_code = Run(argc, argv);
        std::cout.flush();
        cwt::Print("");
        // A refusal or a note that nobody could read was not told.
        if (std::ferror(stderr) != 0 || !std::cout.good()) exit_code = cwt::kBroken;
    } catch (const std::bad_alloc&) {
        cwt::Say("there is not enough memory");
        exit_code = cwt::kBroken;
    } catch (const std::exception& error) {
        cwt::Say(cwt::Printable(error.what()));
        exit_code = cwt::kBroken;
    }
    is_finished = true;
    return exit_code;
}
