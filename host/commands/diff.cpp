#include <filesystem>

#include "commands/commands.h"
#include "commands/findings.h"
#include "commands/value_kinds.h"
#include "session/messages.h"
#include "tariffs/difference/difference.h"
#include "tariffs/folder.h"
#include "tariffs/folder_files.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr int kDifferent = 1;  ///< The exit code that a difference has everywhere.

struct DiffOptions {
    std::string old_path, new_path, set;
    std::vector<std::string> option_files;
    bool all = false, json = false;
};

/// The option files among those told that a directory has.
std::vector<std::string> OptionFilesIn(const Files& files, const DiffOptions& options) {
    std::vector<std::string> names;
    for (const std::string& name : options.option_files) {
        if (files.contains(name)) names.push_back(name);
    }
    return names;
}

DifferenceSide Read(const std::string& path, const DiffOptions& options, Findings& findings) {
    const std::filesystem::path place = PathOf(path);
    if (exists(place / kSettingsFile)) {
        return SideOfFolder(path, ReadFiles(place, true), findings);
    }
    const std::string set = options.set.empty() ? OnlySetIn(place) : options.set;
    Files files = ReadFiles(place, false);
    const std::vector<std::string> option_files = OptionFilesIn(files, options);
    return SideOfDirectory(path, set, std::move(files), option_files, findings);
}

int Diff(const DiffOptions& options) {
    Findings findings;
    DifferenceSide of_old = Read(options.old_path, options, findings);
    DifferenceSide of_new = Read(options.new_path, options, findings);
    SayFindings(findings);
    if (findings.Has(Finding::kError)) return kBroken;
    const Difference difference = DifferenceOf(std::move(of_old), std::move(of_new));
    Print(options.json ? DifferenceJson(difference, options.all)
                       : DifferenceText(difference, options.all));
    return difference.is_alike() ? kDone : kDifferent;
}

}  // namespace

void AddDiff(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* command = AddCommand(app, "diff",
                                   "Tell what changes from one tariff set to another, in the words "
                                   "of the trade.",
                                   Diff, options, exit_code);
    command
        ->add_option("OLD", options->old_path,
                     "A directory with a tariff set, or a folder of text as cwt export writes it.")
        ->type_name(kDirectoryValue)
        ->required();
    command->add_option("NEW", options->new_path, "The other, in either form.")
        ->type_name(kDirectoryValue)
        ->required();
    command
        ->add_option("--set", options->set,
                     "Base name of the set in directories. Default: the only one in each.")
        ->type_name(kSetValue);
    command
        ->add_option("--options", options->option_files,
                     "An option file of the directories, by its name; may be told several "
                     "times.")
        ->type_name("NAME");
    command->add_flag("--all", options->all, "Name every row and cell that changes.");
    command->add_flag("--json", options->json,
                      "Print JSON; of every kind of change the first rows, or with --all each.");
    command->footer(
        "Exit codes: 0 the tariff is the same; 1 it is not; 2 broken data or command line, a "
        "folder that cannot be built, or output that could not be written.\nHow numbers and names "
        "are spelled in a folder makes no difference.");
}

}  // namespace cwt
