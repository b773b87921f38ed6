#include "commands/commands.h"
#include "reference/samples/sample_data.h"
#include "session/messages.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct SampleOptions {
    std::string directory;
    bool force = false;
};

int Sample(const SampleOptions& options) {
    const std::filesystem::path directory = PathOf(options.directory);
    try {
        const auto there = hundredweight::samples::FindSampleFile(directory);
        if (!options.force && !there.empty()) {
            throw Broken(PathText(there) +
                         ": is there already; --force replaces the sample's files");
        }
        hundredweight::samples::WriteSampleData(directory);
    } catch (const std::filesystem::filesystem_error& error) {
        throw Broken(PathText(error.path1()) + ": " + error.code().message());
    }
    return kDone;
}

}  // namespace

void AddSample(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<SampleOptions>();
    CLI::App* command =
        AddCommand(app, "sample", "Write a sample tariff set, the partners' data and shipments.",
                   Sample, options, exit_code);
    command
        ->add_option("DIRECTORY", options->directory,
                     "Where to; created when missing. One that has any of the files is refused.")
        ->required();
    command->add_flag("--force", options->force,
                      "Replace the sample's files, PROFILE.FIL included; others stay.");
}

}  // namespace cwt
