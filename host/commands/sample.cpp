#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "reference/samples/generated_shipments.h"
#include "reference/samples/sample_data.h"
#include "session/messages.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr const char* kSampleSize = "sample";
constexpr const char* kCarrierSize = "carrier";

struct SampleOptions {
    std::string directory;
    bool force = false;
    int shipments = 0;
    std::string size = kSampleSize;
};

/// Prints shipments of the sample tariffs, a row each.
int PrintShipments(int count) {
    constexpr std::size_t kChunk = std::size_t{1} << 16;
    std::string rows;
    hundredweight::samples::WriteGeneratedRows(count, [&](const std::string& row) {
        rows += row;
        if (rows.size() < kChunk) return;
        Print(rows);
        rows.clear();
    });
    Print(rows);
    return kDone;
}

int Sample(const SampleOptions& options) {
    if (options.directory.empty() == (options.shipments == 0)) {
        throw Broken("sample: either DIRECTORY or --shipments is wanted");
    }
    if (options.shipments > 0) return PrintShipments(options.shipments);
    const std::filesystem::path directory = PathOf(options.directory);
    try {
        const auto there = hundredweight::samples::FindSampleFile(directory);
        if (!options.force && !there.empty()) {
            throw Broken(PathText(there) +
                         ": is there already; --force replaces the sample's files");
        }
        using hundredweight::samples::Size;
        hundredweight::samples::WriteSampleData(
            directory, options.size == kCarrierSize ? Size::kCarrier : Size::kSample);
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
        ->type_name(kDirectoryValue);
    constexpr int kMostShipments = 1000000000;
    CLI::Option* const size =
        command
            ->add_option("--size", options->size,
                         "How much data: a sample's, or a carrier's, with a national tariff of "
                         "800,000 lanes and 244 MB in all.")
            ->check(CLI::IsMember({kSampleSize, kCarrierSize}))
            ->capture_default_str();
    command
        ->add_option("--shipments", options->shipments,
                     "Instead, print so many shipments on the sample tariffs, as rows of NDJSON; "
                     "about three in ten are refused. They are the same on every machine.")
        ->check(CLI::Range(1, kMostShipments))
        ->excludes(size);
    command->add_flag("--force", options->force,
                      "Replace the sample's files, PROFILE.FIL included; others stay.");
}

}  // namespace cwt
