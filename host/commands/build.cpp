#include <fmt/core.h>

#include <algorithm>
#include <random>

#include "commands/commands.h"
#include "commands/findings.h"
#include "commands/new_tariff.h"
#include "commands/value_kinds.h"
#include "files/staged_files.h"
#include "session/messages.h"
#include "session/tariff_set.h"
#include "tariffs/families/family.h"
#include "tariffs/field_guide.h"
#include "tariffs/folder.h"
#include "tariffs/folder_files.h"
#include "tariffs/translation.h"
#include "text/letters.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct BuildOptions {
    std::string folder, directory;
    bool strict = false, force = false, check = false, unchecked = false;
    std::string new_folder;
    bool fields = false, schema = false;
};

/// A directory beside the one that is meant, gone with its guard.
class ScratchDirectory {
 public:
    explicit ScratchDirectory(const std::filesystem::path& meant)
        : path_(absolute(meant / "").parent_path()) {
        path_ += fmt::format(".{:08x}.part", std::random_device()());
        create_directories(path_.parent_path());
        if (!create_directory(path_)) throw Broken(PathText(path_) + ": is there already");
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        remove_all(path_, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

 private:
    std::filesystem::path path_;
};

/// What is wrong with a file, by the text that gives it.
void RefuseFile(const std::string& extension, const std::string& reason, Translation& built) {
    const Family* const family = FamilyOf(extension);
    built.findings.Refuse({family != nullptr ? TextFileOf(*family) : kSettingsFile},
                          fmt::format("{}.{}: {}", built.set, extension, reason));
}

/// Loads the set as a host does that rates with an engine. What does not load is refused.
void TryLoad(const std::filesystem::path& directory, Translation& built) {
    TariffSet set({.data = directory, .set = built.set});
    int32_t failure = set.Load();
    try {
        if (failure == 0) failure = set.LoadTerms();
    } catch (const Broken&) {
        return RefuseFile("LVL", "has no date: its first row gives the tariff's day", built);
    }
    const std::vector<SetFile> files = set.Files();
    if (failure == 0) {
        for (const SetFile& file : files) {
            try {
                file.RequireWhole();
            } catch (const Broken&) {
                RefuseFile(file.extension, "ends within a record", built);
            }
        }
        return;
    }
    const std::string extension = FileOfCode(failure, files);
    RefuseFile(extension, Describe(failure), built);
}

/// Whether a file is the tariff set's own, and not its users' or its partners'.
bool IsSets(const std::string& name, const std::string& set) {
    return LowerCase(name).starts_with(LowerCase(set) + '.');
}

/// Every file of the set that the folder gives, and the users' that it has, by what a directory has
/// for it. Files in other letters would be found in their place, and those that the folder has none
/// for would be read on.
Replacement ReplacementIn(const std::filesystem::path& directory, const Translation& built) {
    Replacement replacement;
    replacement.heart = built.set + ".SET";
    const std::vector<std::string> there = NamesIn(directory);
    for (const Family& family : Families()) {
        const std::string name = fmt::format("{}.{}", built.set, family.extension);
        if (built.files.contains(name)) continue;
        for (const std::string& other : InAnyLetters(name, there)) {
            replacement.leaving.push_back(other);
        }
    }
    for (const auto& [name, bytes] : built.files) {
        replacement.coming.push_back(name);
        for (const std::string& other : InAnyLetters(name, there)) {
            const bool is_kept =
                !IsSets(name, built.set) && !HasBytes(directory / PathOf(other), bytes);
            if (is_kept) replacement.kept.push_back(other);
            if (other != name) replacement.leaving.push_back(other);
        }
    }
    return replacement;
}

/// Without --force nothing that is there goes.
void RequireRoom(const std::filesystem::path& directory, const Replacement& replacement) {
    for (const std::string& name : NamesIn(directory)) {
        const bool is_replaced =
            std::ranges::find(replacement.coming, name) != replacement.coming.end();
        const bool leaves =
            std::ranges::find(replacement.leaving, name) != replacement.leaving.end();
        if (!is_replaced && !leaves) continue;
        throw Broken(PathText(directory / PathOf(name)) +
                     (is_replaced ? ": is there already; --force replaces the set's files"
                                  : ": is none of the folder's; --force removes it"));
    }
}

/// Sets of one directory have its profiles and partners' files together: one of them is not built
/// over those of another.
void RequireOwnDirectory(const std::filesystem::path& directory, const Translation& built) {
    for (const std::string& name : NamesIn(directory)) {
        if (name == kSettingsFile) {
            throw Broken(PathText(directory) + ": is a folder of text; build into another");
        }
        const bool is_other = LowerCase(name).ends_with(".set") && !IsSets(name, built.set) &&
                              std::ranges::any_of(built.files, [&](const auto& file) {
                                  return !IsSets(file.first, built.set);
                              });
        if (is_other) {
            throw Broken(PathText(directory / PathOf(name)) +
                         ": is another set, which has profiles and partners' files together with "
                         "this one; build into a directory of its own");
        }
    }
}

void BuildInto(const BuildOptions& options, Translation& built) {
    const std::filesystem::path directory = PathOf(options.directory);
    RequireOwnDirectory(directory, built);
    if (!options.force) RequireRoom(directory, ReplacementIn(directory, built));
    StagedFiles staged(directory);
    if (staged.found_leftovers()) {
        Say("note: " + options.directory +
            ": a build was ended here before its end; what it left is cleared away");
    }
    WriteFiles(staged.path(), built.files);
    if (!options.unchecked) TryLoad(staged.path(), built);
    if (built.findings.Has(Finding::kError)) return;
    const Replacement replacement = ReplacementIn(directory, built);
    staged.Install(replacement);
    for (const std::string& name : replacement.leaving) Say("note: " + name + " is removed");
    for (const std::string& name : replacement.kept) {
        Say(fmt::format("note: {0} is replaced; what it was is {0}.bak", name));
    }
}

void CheckBuild(const BuildOptions& options, Translation& built) {
    const ScratchDirectory scratch(std::filesystem::temp_directory_path() / "cwt");
    WriteFiles(scratch.path(), built.files);
    if (!options.unchecked) TryLoad(scratch.path(), built);
}

int Build(const BuildOptions& options) {
    if (!options.new_folder.empty()) return WriteNewTariff(options.new_folder);
    if (options.fields || options.schema) {
        Print(options.fields ? FieldGuide() : SettingsSchema());
        return kDone;
    }
    if (options.folder.empty()) throw Broken("build: FOLDER is wanted");
    if (options.check != options.directory.empty()) {
        throw Broken("build: either DIRECTORY or --check is wanted");
    }
    Translation built = BuildSet(ReadFiles(PathOf(options.folder), true));
    if (options.strict) built.findings.MakeStrict();
    if (!built.findings.Has(Finding::kError)) {
        options.check ? CheckBuild(options, built) : BuildInto(options, built);
    }
    SayFindings(built.findings);
    if (built.findings.Has(Finding::kError)) return kBroken;
    Print(fmt::format("{}: the set {} {}, {} files\n",
                      options.check ? options.folder : options.directory, built.set,
                      options.check ? "builds" : "is built", built.files.size()));
    return kDone;
}

}  // namespace

void AddBuild(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<BuildOptions>();
    CLI::App* command = AddCommand(app, "build", "Make a tariff set of a folder of text.", Build,
                                   options, exit_code);
    command->add_option("FOLDER", options->folder, "The folder, as cwt export writes it, or --new.")
        ->type_name(kDirectoryValue);
    command
        ->add_option("DIRECTORY", options->directory,
                     "Where to; made when missing. Its users' and partners' files stay, unless "
                     "the folder has others: then they are NAME.bak.")
        ->type_name(kDirectoryValue);
    command->add_flag("--check", options->check, "Say what is wrong with the folder, and no more.");
    command->add_flag("--unchecked", options->unchecked,
                      "Build it even when a load refuses it: to have a damaged set back.");
    command->add_flag("--strict", options->strict, "Take warnings for errors.");
    command->add_flag("--force", options->force,
                      "Replace the set's files, and remove those that the folder has none for.");
    const std::vector<CLI::Option*> of_build = command->get_options();
    CLI::Option* const others[] = {
        command
            ->add_option("--new", options->new_folder,
                         "Instead, write a tariff to begin with to this folder, which has none "
                         "of its files; its README.md tells what to change first.")
            ->type_name(kDirectoryValue),
        command->add_flag("--fields", options->fields,
                          "Instead, print every sheet and section field by field, as Markdown."),
        command->add_flag("--schema", options->schema,
                          "Instead, print the JSON Schema of settings.json.")};
    for (CLI::Option* const other : others) {
        for (CLI::Option* const option : of_build) {
            if (option != command->get_help_ptr()) other->excludes(option);
        }
    }
    others[0]->excludes(others[1])->excludes(others[2]);
    others[1]->excludes(others[2]);
}

}  // namespace cwt
