#include <fmt/core.h>

#include <algorithm>

#include "commands/commands.h"
#include "commands/findings.h"
#include "commands/value_kinds.h"
#include "files/staged_files.h"
#include "session/messages.h"
#include "tariffs/file_names.h"
#include "tariffs/folder.h"
#include "tariffs/folder_files.h"
#include "tariffs/translation.h"
#include "text/letters.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct ExportOptions {
    std::string directory, folder, set;
    std::vector<std::string> option_files;
    bool force = false;
};

/// What a folder has of an earlier export.
std::vector<std::string> TariffTexts(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    if (!exists(folder)) return names;
    for (const auto& [name, text] : ReadFiles(folder, true)) {
        if (IsTariffText(name)) names.push_back(name);
    }
    return names;
}

int Export(const ExportOptions& options) {
    const std::filesystem::path folder = PathOf(options.folder);
    const std::string set =
        options.set.empty() ? OnlySetIn(PathOf(options.directory)) : options.set;
    const Files data = ReadFiles(PathOf(options.directory), false);
    const auto is_of_set = [&](const auto& file) {
        return LowerCase(file.first).starts_with(LowerCase(set) + '.');
    };
    if (std::ranges::none_of(data, is_of_set)) {
        throw Broken(options.directory + ": has no file of a set " + set);
    }
    Translation exported = ExportSet(data, set, options.option_files);
    SayFindings(exported.findings);
    if (exported.findings.Has(Finding::kError)) return kBroken;
    const std::vector<std::string> there = TariffTexts(folder);
    if (!options.force && !there.empty()) {
        throw Broken(PathText(folder / PathOf(there[0])) +
                     ": is there already; --force replaces the folder's texts");
    }
    StagedFiles staged(folder);
    WriteFiles(staged.path(), exported.files);
    Replacement replacement{.coming = {}, .leaving = {}, .kept = {}, .heart = kSettingsFile};
    for (const auto& [name, text] : exported.files) replacement.coming.push_back(name);
    for (const std::string& name : there) {
        if (!exported.files.contains(name)) replacement.leaving.push_back(name);
    }
    staged.Install(replacement);
    Print(fmt::format("{}: the set {} in {} files\n", options.folder, set, exported.files.size()));
    return kDone;
}

}  // namespace

void AddExport(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* command = AddCommand(app, "export", "Write a tariff set as a folder of text.", Export,
                                   options, exit_code);
    command
        ->add_option("DIRECTORY", options->directory,
                     "Directory of the set, with its users' and its partners' files.")
        ->type_name(kDirectoryValue)
        ->required();
    command
        ->add_option("FOLDER", options->folder,
                     "Where to; made when missing. cwt build makes the same files of it.")
        ->type_name(kDirectoryValue)
        ->required();
    AddSet(command, options->set);
    command
        ->add_option("--options", options->option_files,
                     "An option file of the directory, by its name; may be told several times.")
        ->type_name("NAME");
    command->add_flag("--force", options->force,
                      "Replace the folder's texts, and remove those of files that are gone.");
}

}  // namespace cwt
