#include <fmt/core.h>

#include <random>

#include "commands/commands.h"
#include "commands/findings.h"
#include "session/messages.h"
#include "session/tariff_set.h"
#include "tariffs/family.h"
#include "tariffs/folder.h"
#include "tariffs/folder_files.h"
#include "tariffs/translation.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct BuildOptions {
    std::string folder, directory;
    bool strict = false, force = false, check = false, unchecked = false;
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
    if (failure == 0) failure = set.LoadTerms();
    const std::vector<SetFile> files = set.Files();
    if (failure == 0) {
        for (const SetFile& file : files) {
            if (!file.is_table() || !file.size || file.need == Need::kNotRead) continue;
            try {
                RequireWholeRecords(file.path, file.record_size());
            } catch (const Broken&) {
                RefuseFile(file.extension, "ends within a record", built);
            }
        }
        return;
    }
    const std::string extension = FileOfCode(failure, files);
    RefuseFile(extension, Describe(failure), built);
}

/// The set's files of a directory that the folder has none for: rating would read them on.
std::vector<std::string> Leftovers(const Translation& built,
                                   const std::filesystem::path& directory) {
    std::vector<std::string> names;
    for (const Family& family : Families()) {
        const std::string name = fmt::format("{}.{}", built.set, family.extension);
        const bool is_users = std::string_view(family.extension).find('.') != std::string::npos;
        if (!is_users && !built.files.contains(name)) names.push_back(name);
    }
    return Present(directory, names);
}

void Install(const BuildOptions& options, const Translation& built,
             const std::filesystem::path& scratch) {
    const std::filesystem::path directory = PathOf(options.directory);
    const std::string settings = built.set + ".SET";
    if (!exists(directory)) return rename(scratch, directory);
    std::vector<std::string> names;
    for (const auto& [name, bytes] : built.files) names.push_back(name);
    const std::vector<std::string> there = Present(directory, names);
    if (!options.force && !there.empty()) {
        throw Broken(PathText(directory / PathOf(there[0])) +
                     ": is there already; --force replaces the set's files");
    }
    const std::vector<std::string> leftovers = Leftovers(built, directory);
    if (!options.force && !leftovers.empty()) {
        throw Broken(PathText(directory / PathOf(leftovers[0])) +
                     ": is none of the folder's; --force removes it");
    }
    RemoveFiles(directory, {settings});
    RemoveFiles(directory, leftovers);
    for (const std::string& name : leftovers) Say("note: " + name + " is removed");
    WriteFiles(directory, built.files, settings);
}

int Build(const BuildOptions& options) {
    if (options.check != options.directory.empty()) {
        throw Broken("build: either DIRECTORY or --check is wanted");
    }
    Translation built = BuildSet(ReadFiles(PathOf(options.folder), true));
    if (options.strict) built.findings.MakeStrict();
    const std::filesystem::path beside =
        options.check ? std::filesystem::temp_directory_path() / "cwt" : PathOf(options.directory);
    if (!built.findings.Has(Finding::kError)) {
        const ScratchDirectory scratch(beside);
        WriteFiles(scratch.path(), built.files, "");
        if (!options.unchecked) TryLoad(scratch.path(), built);
        if (!built.findings.Has(Finding::kError) && !options.check) {
            Install(options, built, scratch.path());
        }
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
    command->add_option("FOLDER", options->folder, "The folder, as cwt export writes it.")
        ->required();
    command->add_option("DIRECTORY", options->directory,
                        "Where to; made when missing. Its users' and partners' files stay, unless "
                        "the folder has others.");
    command->add_flag("--check", options->check, "Say what is wrong with the folder, and no more.");
    command->add_flag("--unchecked", options->unchecked,
                      "Build it even when a load refuses it: to have a damaged set back.");
    command->add_flag("--strict", options->strict, "Take warnings for errors.");
    command->add_flag("--force", options->force,
                      "Replace the set's files, and remove those that the folder has none for.");
}

}  // namespace cwt
