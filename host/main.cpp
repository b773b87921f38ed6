// cwt: rates shipments and shows tariff sets from the command line.
#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "failure.h"
#include "freight_bill.h"
#include "inspection.h"
#include "rating_session.h"
#include "reference/samples/sample_data.h"
#include "shipment.h"

namespace {

constexpr int kHighestRequestCode = 99;
constexpr int kJsonIndent = 2;

const char* const kExitCodes =
    "Exit codes: 0 done (rated), 1 refused by the library or the engine, 2 broken data, engine or "
    "command line.\nEvery failure is one line on standard error, with the library's code.";

struct RateOptions {
    std::filesystem::path shipment;
    std::filesystem::path data;
    cwt::Sources sources;
    int request_code = 0;
    bool json = false;
};

struct InspectOptions {
    cwt::Sources sources;
    bool without_engine = false;
    bool json = false;
};

void PrintJson(const nlohmann::ordered_json& json) {
    fmt::print("{}\n", json.dump(kJsonIndent));
}

int Rate(RateOptions options) {
    const cwt::Shipment shipment = cwt::ReadShipment(options.shipment);
    cwt::Sources& sources = options.sources;
    sources.data = options.data.empty()
                       ? cwt::FindDataDirectory(options.shipment.parent_path(), sources.set)
                       : options.data;
    cwt::RatingSession session(sources);
    cwt::EnterShipment(shipment, session.context());
    for (const std::string& note : session.Rate(options.request_code)) {
        fmt::print(stderr, "cwt: note: {}\n", note);
    }
    if (options.json) {
        PrintJson(cwt::BillJson(session.context()));
    } else {
        fmt::print("{}", cwt::BillText(session.context()));
    }
    return cwt::kDone;
}

int Inspect(const InspectOptions& options) {
    const nlohmann::ordered_json inspection =
        cwt::Inspect(options.sources, !options.without_engine);
    if (options.json) {
        PrintJson(inspection);
    } else {
        fmt::print("{}", cwt::InspectionText(inspection));
    }
    if (inspection["loads"].get<bool>()) return cwt::kDone;
    throw cwt::Broken(inspection["failure"]["message"].get<std::string>());
}

int WriteSample(const std::filesystem::path& directory) {
    hundredweight::samples::WriteSampleData(directory);
    return cwt::kDone;
}

int Run(int argc, char** argv) {
    CLI::App app("Rates less-than-truckload shipments.", "cwt");
    app.set_version_flag("--version", HWT_VERSION);
    app.footer(kExitCodes);
    app.require_subcommand(1);
    int exit_code = cwt::kDone;

    RateOptions rate;
    CLI::App* rate_command = app.add_subcommand("rate", "Rate a shipment and print its bill.");
    rate_command->add_option("SHIPMENT", rate.shipment, "The shipment, a JSON file.")->required();
    rate_command->add_option("--data", rate.data,
                             "Directory of the tariff set and the engine's data. Default: the "
                             "nearest one that holds the set, from the shipment's upward.");
    rate_command->add_option("--set", rate.sources.set, "Base name of the tariff set.")
        ->capture_default_str();
    rate_command
        ->add_option("--engine", rate.sources.engine,
                     "Engine library: a path, or a name to look for beside cwt's own libraries.")
        ->capture_default_str();
    rate_command->add_option("--request-code", rate.request_code, "Code passed on to the engine.")
        ->check(CLI::Range(0, kHighestRequestCode))
        ->capture_default_str();
    rate_command->add_flag("--json", rate.json, "Print the bill as JSON; amounts are texts.");
    rate_command->footer(kExitCodes);
    rate_command->callback([&] { exit_code = Rate(rate); });

    InspectOptions inspect;
    inspect.sources.data = ".";
    CLI::App* inspect_command =
        app.add_subcommand("inspect", "Show what is in a tariff set and whether it loads.");
    inspect_command->add_option("DIRECTORY", inspect.sources.data, "Where the set is.")
        ->capture_default_str();
    inspect_command->add_option("--set", inspect.sources.set, "Base name of the tariff set.")
        ->capture_default_str();
    inspect_command->add_flag("--without-engine", inspect.without_engine,
                              "Load what a host needs that rates by the set's own tables.");
    inspect_command->add_flag("--json", inspect.json, "Print as JSON.");
    inspect_command->footer(kExitCodes);
    inspect_command->callback([&] { exit_code = Inspect(inspect); });

    std::filesystem::path sample_directory;
    CLI::App* sample_command = app.add_subcommand(
        "sample", "Write a sample tariff set, the reference engine's data and shipments.");
    sample_command->add_option("DIRECTORY", sample_directory, "Where to; created when missing.")
        ->required();
    sample_command->callback([&] { exit_code = WriteSample(sample_directory); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? cwt::kDone : cwt::kBroken;
    }
    return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
    cwt::CollectMessageBoxes();
    try {
        return Run(argc, argv);
    } catch (const cwt::Refused& refusal) {
        fmt::print(stderr, "cwt: refused: {}\n", refusal.what());
        return cwt::kRefused;
    } catch (const std::exception& error) {
        fmt::print(stderr, "cwt: {}\n", error.what());
        return cwt::kBroken;
    }
}
