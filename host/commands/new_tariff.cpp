#include "commands/new_tariff.h"

#include <fmt/core.h>

#include "commands/commands.h"
#include "files/staged_files.h"
#include "reference/samples/sample_folder.h"
#include "session/messages.h"
#include "tariffs/folder.h"
#include "tariffs/folder_files.h"
#include "text/path_text.h"

namespace cwt {

int WriteNewTariff(const std::string& folder) {
    const Files files = hundredweight::samples::TemplateFolder();
    Replacement replacement{.coming = {}, .leaving = {}, .kept = {}, .heart = kSettingsFile};
    for (const auto& [name, text] : files) {
        const std::filesystem::path file = PathOf(folder) / PathOf(name);
        if (exists(symlink_status(file))) throw Broken(PathText(file) + ": is there already");
        replacement.coming.push_back(name);
    }
    StagedFiles staged(PathOf(folder));
    WriteFiles(staged.path(), files);
    staged.Install(replacement);
    Print(fmt::format("{}: a tariff to begin with, {} files; README.md tells what they are\n",
                      folder, files.size()));
    return kDone;
}

}  // namespace cwt
