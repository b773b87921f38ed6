// cwt: rates shipments and shows tariff sets from the command line.
#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bill/freight_bill.h"
#include "bill/record_text.h"
#include "reference/samples/sample_data.h"
#include "session/failure.h"
#include "session/inspection.h"
#include "session/profile_list.h"
#include "session/rating_session.h"
#include "session/validation.h"
#include "shipment/shipment.h"
#include "text/path_text.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr int kHighestRequestCode = 99;
constexpr int kJsonIndent = 2;

const char* const kExitCodes =
    "Exit codes: 0 done (rated), 1 refused by the library or a partner, 2 broken data, partner "
    "library or command line.\nEvery failure is a line on standard error, with the library's code.";

struct Options {
    std::string shipment;
    std::string directory = ".";
    std::string data;  ///< Empty: the nearest directory that holds the set.
    cwt::Sources sources;
    std::vector<std::string> postal_codes;
    std::string profile;
    int request_code = 0;
    bool without_engine = false;
    bool json = false;
    bool record = false;
};

/// Where a shipment's data are.
cwt::Sources ShipmentSources(const Options& options) {
    cwt::Sources sources = options.sources;
    const std::filesystem::path shipment =
        absolute(cwt::PathOf(options.shipment)).lexically_normal();
    sources.data = options.data.empty()
                       ? cwt::FindDataDirectory(shipment.parent_path(), sources.set)
                       : cwt::PathOf(options.data);
    return sources;
}

cwt::Sources DirectorySources(const Options& options) {
    cwt::Sources sources = options.sources;
    sources.data = cwt::PathOf(options.directory);
    return sources;
}

void PrintJson(const Json& json) {
    fmt::print("{}\n", json.dump(kJsonIndent));
}

void Rate(const Options& options) {
    const cwt::Shipment shipment = cwt::ReadShipment(cwt::PathOf(options.shipment));
    cwt::RatingSession session(ShipmentSources(options));
    for (const std::string& note : session.Rate(shipment, options.request_code)) {
        fmt::print(stderr, "cwt: note: {}\n", note);
    }
    if (options.record) return fmt::print("{}", cwt::RecordText(session.context()));
    if (options.json) return PrintJson(cwt::BillJson(session.context()));
    fmt::print("{}", cwt::BillText(session.context()));
}

void Check(const Options& options) {
    const cwt::Shipment shipment = cwt::ReadShipment(cwt::PathOf(options.shipment));
    cwt::RatingSession session(ShipmentSources(options));
    session.Check(shipment);
    fmt::print("The shipment is valid.\n");
}

void States(const Options& options) {
    cwt::RatingSession session(DirectorySources(options));
    std::vector<std::string> complaints;
    for (const std::string& postal_code : options.postal_codes) {
        const cwt::StateAnswer answer = cwt::FindState(session.context(), postal_code);
        if (answer.complaint.empty()) {
            fmt::print("{} {}\n", postal_code, answer.state);
        } else {
            complaints.push_back(fmt::format("{}: {}", postal_code, answer.complaint));
        }
    }
    if (!complaints.empty()) throw cwt::Refused(complaints);
}

void Profiles(const Options& options) {
    const cwt::Sources sources = DirectorySources(options);
    if (!options.profile.empty()) {
        const Json profile = cwt::ShowProfile(sources, options.profile);
        if (options.json) return PrintJson(profile);
        fmt::print("{}", cwt::ProfileText(profile));
        return;
    }
    const std::vector<std::string> names = cwt::ProfileNames(sources);
    if (options.json) return PrintJson(names);
    for (const std::string& name : names) fmt::print("{}\n", name);
}

void Inspect(const Options& options) {
    const Json inspection = cwt::Inspect(DirectorySources(options), !options.without_engine);
    if (options.json) {
        PrintJson(inspection);
    } else {
        fmt::print("{}", cwt::InspectionText(inspection));
    }
    const Json& failure = inspection["failure"];
    if (failure.is_null()) return;
    throw cwt::Broken(fmt::format("file {}: {}", failure["file"].get<std::string>(),
                                  failure["message"].get<std::string>()));
}

void WriteSample(const Options& options) {
    hundredweight::samples::WriteSampleData(cwt::PathOf(options.directory));
}

CLI::App* AddCommand(CLI::App& app, const char* name, const char* purpose,
                     void (*run)(const Options&), const Options& options) {
    CLI::App* command = app.add_subcommand(name, purpose);
    command->footer(kExitCodes);
    command->callback([run, &options] { run(options); });
    return command;
}

void AddSet(CLI::App* command, Options& options) {
    command->add_option("--set", options.sources.set, "Base name of the tariff set.")
        ->capture_default_str();
}

void AddEngine(CLI::App* command, Options& options) {
    command
        ->add_option("--engine", options.sources.engine,
                     "Engine library: a path, or a name to look for beside cwt's own libraries.")
        ->capture_default_str();
}

void AddShipment(CLI::App* command, Options& options) {
    command->add_option("SHIPMENT", options.shipment, "The shipment, a JSON file.")->required();
    command->add_option("--data", options.data,
                        "Directory of the tariff set, the partners' data and the profiles. "
                        "Default: the nearest one that holds the set, from the shipment's upward.");
    AddSet(command, options);
    AddEngine(command, options);
}

void AddDirectory(CLI::App* command, Options& options) {
    command->add_option("--data", options.directory, "Directory of the tariff set and profiles.")
        ->capture_default_str();
    AddSet(command, options);
}

CLI::Option* AddJson(CLI::App* command, Options& options) {
    return command->add_flag("--json", options.json,
                             "Print JSON; rates, charges and texts as texts.");
}

void AddCommands(CLI::App& app, Options& options) {
    CLI::App* rate = AddCommand(app, "rate", "Rate a shipment and print its bill.", Rate, options);
    AddShipment(rate, options);
    rate->add_option("--service-guide", options.sources.service_guide,
                     "Service guide library, for shipments that ask for it.")
        ->capture_default_str();
    rate->add_option("--request-code", options.request_code, "Code passed on to the engine.")
        ->check(CLI::Range(0, kHighestRequestCode))
        ->capture_default_str();
    CLI::Option* json = AddJson(rate, options);
    rate->add_flag("--record", options.record,
                   "Print the library's record instead: the fields that are set, in hexadecimal.")
        ->excludes(json);

    CLI::App* check =
        AddCommand(app, "check", "Check a shipment without rating it.", Check, options);
    AddShipment(check, options);

    CLI::App* states =
        AddCommand(app, "states", "Show what state postal codes lie in.", States, options);
    states->add_option("POSTAL_CODE", options.postal_codes, "ZIP or Canadian postal codes.")
        ->required();
    AddDirectory(states, options);
    AddEngine(states, options);

    CLI::App* profiles =
        AddCommand(app, "profiles", "List the profiles, or show one by name.", Profiles, options);
    profiles->add_option("NAME", options.profile, "The profile to show. Default: all names.");
    AddDirectory(profiles, options);
    AddJson(profiles, options);

    CLI::App* inspect = AddCommand(
        app, "inspect", "Show what is in a tariff set and whether it loads.", Inspect, options);
    inspect->add_option("DIRECTORY", options.directory, "Where the set is.")->capture_default_str();
    AddSet(inspect, options);
    inspect->add_flag("--without-engine", options.without_engine,
                      "Load what a host needs that rates by the set's own tables.");
    AddJson(inspect, options);

    CLI::App* sample =
        AddCommand(app, "sample", "Write a sample tariff set, the partners' data and shipments.",
                   WriteSample, options);
    sample->add_option("DIRECTORY", options.directory, "Where to; created when missing.")
        ->required();
}

int Run(int argc, char** argv) {
    CLI::App app("Rates less-than-truckload shipments.", "cwt");
    app.set_version_flag("--version", HWT_VERSION);
    app.footer(kExitCodes);
    app.require_subcommand(1);
    app.allow_windows_style_options(false);  // "/data" is a directory on every system.
    Options options;
    AddCommands(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? cwt::kDone : cwt::kBroken;
    }
    return cwt::kDone;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        cwt::CollectMessageBoxes();
        return Run(argc, argv);
    } catch (const cwt::Refused& refusal) {
        for (const std::string& complaint : refusal.complaints()) {
            std::fprintf(stderr, "cwt: refused: %s\n", complaint.c_str());
        }
        return cwt::kRefused;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "cwt: %s\n", error.what());
        return cwt::kBroken;
    }
}
