// What a shell offers at a Tab. The scripts that the shells load ask cwt itself, so that commands,
// options and values are told in one place.
#include <fmt/core.h>

#include <cstdlib>
#include <set>

#include "commands/commands.h"
#include "commands/typed_line.h"
#include "commands/value_kinds.h"
#include "messages/message_guide.h"
#include "session/profile_list.h"
#include "session/tariff_set.h"
#include "text/path_text.h"

namespace cwt {
namespace {

/// What the shell itself is asked for, by the kind of a value.
struct ShellKind {
    std::string_view kind, request;
};
constexpr ShellKind kShellKinds[] = {
    {kDirectoryValue, ":directories"},
    {kFileValue, ":files"},
    {kCsvValue, ":files .csv"},
    {kHtmlValue, ":files .html"},
    {kJsonValue, ":files .json"},
    {kLibraryValue, ":files .so"},
    {kRowsValue, ":files .ndjson .csv .sqlite .gz .zst"},
};

std::string Offer(const std::string& word, const std::string& description) {
    const std::size_t end = description.find(". ");
    std::string sentence = description.substr(0, end);
    if (end == description.npos && sentence.ends_with('.')) sentence.pop_back();
    return fmt::format("{}\t{}\n", word, sentence);
}

std::string OfferNames(const TypedLine& line) {
    std::string offers;
    for (const CLI::App* command : line.command->get_subcommands({})) {
        if (!line.last.starts_with('-')) {
            offers += Offer(command->get_name(), command->get_description());
        }
    }
    if (!offers.empty()) return offers;
    for (const CLI::Option* option : line.command->get_options()) {
        const bool is_told = line.Has(option) && !IsList(*option);
        if (is_told || !line.Allows(*option)) continue;
        for (const std::string& name : option->get_lnames()) {
            offers += Offer("--" + name, option->get_description());
        }
    }
    return offers;
}

/// A path as a shell would have given it, which has not yet expanded it.
std::filesystem::path TypedPath(const std::string& text) {
    const char* const home = std::getenv("HOME");
    const bool is_at_home = home != nullptr && (text == "~" || text.starts_with("~/"));
    return PathOf(is_at_home ? home + text.substr(1) : text);
}

/// Where the search for data begins: beside the file that a command reads.
std::filesystem::path StartOf(const TypedLine& line) {
    for (const TypedValue& value : line.values) {
        if (value.option->get_positional()) return absolute(TypedPath(value.text)).parent_path();
    }
    return ".";
}

/// The sets of the directories that are named, or of the nearest one that has any.
std::string OfferSets(const TypedLine& line) {
    std::set<std::string> sets;
    const std::vector<std::string> directories = line.ValuesOf(kDirectoryValue);
    for (const std::string& directory : directories) {
        for (std::string& set : SetsIn(TypedPath(directory))) sets.insert(std::move(set));
    }
    if (directories.empty()) {
        const std::filesystem::path nearest = FindDataDirectory("", StartOf(line), "");
        for (std::string& set : SetsIn(nearest)) sets.insert(std::move(set));
    }
    std::string offers;
    for (const std::string& set : sets) offers += Offer(set, "");
    return offers;
}

std::string OfferProfiles(const TypedLine& line) {
    Options options;
    for (const std::string& data : line.ValuesOf(kDirectoryValue)) {
        options.data = PathText(TypedPath(data));
    }
    for (const std::string& set : line.ValuesOf(kSetValue)) options.sources.set = set;
    const Sources sources = FindSources(options, ".");
    RequireProfiles(sources.data);
    TariffSet set(sources);
    std::string offers;
    for (const std::string& name : ProfileNames(set.context())) offers += Offer(name, "");
    return offers;
}

std::string OfferCodes() {
    std::string offers;
    for (const auto& [code, title] : ExplainedCodes()) offers += Offer(std::to_string(code), title);
    return offers;
}

std::string OfferValues(const TypedLine& line) {
    std::string offers;
    for (const std::string& choice : ChoicesOf(*line.awaited)) offers += Offer(choice, "");
    const std::string kind = ValueKindOf(*line.awaited);
    for (const ShellKind& each : kShellKinds) {
        if (each.kind == kind) offers += fmt::format("{}\n", each.request);
    }
    if (kind == kCodeValue) offers += OfferCodes();
    if (kind == kSetValue) offers += OfferSets(line);
    if (kind == kProfileValue) offers += OfferProfiles(line);
    return offers;
}

}  // namespace

void Complete(const CLI::App& program, const std::vector<std::string>& words) {
    const TypedLine line = ReadTypedLine(program, words);
    if (line.command == nullptr) return;
    try {
        Print(line.awaited == nullptr ? OfferNames(line) : OfferValues(line));
    } catch (const std::exception&) {
        // Data that cannot be read have nothing to offer; the command itself will say so.
    }
}

}  // namespace cwt
