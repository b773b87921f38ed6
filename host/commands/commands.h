// The commands, each with its options and exit code.
#pragma once

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "session/sources.h"
#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

class Session;

enum ExitCode { kDone = 0, kRefused = 1, kBroken = 2 };

/// What several commands are told alike.
struct Options {
    std::string shipment;  ///< A file; "-" is standard input.
    std::string data;      ///< Empty: the nearest directory that holds the set.
    Sources sources = {.data = {}, .set = {}};
    bool json = false;
};

/// Add a command. `exit_code` receives what it comes to.
void AddRate(CLI::App& app, int& exit_code);
void AddCheck(CLI::App& app, int& exit_code);
void AddBatch(CLI::App& app, int& exit_code);
void AddStates(CLI::App& app, int& exit_code);
void AddProfiles(CLI::App& app, int& exit_code);
void AddInspect(CLI::App& app, int& exit_code);
void AddCompare(CLI::App& app, int& exit_code);
void AddExport(CLI::App& app, int& exit_code);
void AddBuild(CLI::App& app, int& exit_code);
void AddDiff(CLI::App& app, int& exit_code);
void AddSample(CLI::App& app, int& exit_code);
void AddMessage(CLI::App& app, int& exit_code);
/// Where the system has what it needs.
void AddServe(CLI::App& app, int& exit_code);

/// Prints what the last of the words behind the program's name may become: a line each, with what
/// it means behind a tab, or behind a colon what the shell itself is asked for.
void Complete(const CLI::App& program, const std::vector<std::string>& words);

/// A command whose options live as long as it does.
template <class CommandOptions>
CLI::App* AddCommand(CLI::App& app, const char* name, const char* purpose,
                     int (*run)(const CommandOptions&), std::shared_ptr<CommandOptions> options,
                     int& exit_code) {
    CLI::App* command = app.add_subcommand(name, purpose);
    command->footer(app.get_footer());
    command->callback([run, options, &exit_code] { exit_code = run(*options); });
    return command;
}

void AddShipment(CLI::App* command, Options& options);
void AddData(CLI::App* command, Options& options);
void AddSet(CLI::App* command, std::string& set);
void AddEngine(CLI::App* command, Options& options);
void AddServiceGuide(CLI::App* command, Options& options);
/// Adds --json. What it prints names its schema.
void AddJson(CLI::App* command, Options& options);

/// Where the data are, looked for from a directory upward unless that was told.
Sources FindSources(const Options& options, const std::filesystem::path& start);

/// Reads the shipment, and finds the data from its directory.
struct ShipmentInput {
    Shipment shipment;
    Refusals refusals;
    Sources sources;
};
ShipmentInput ReadShipmentInput(const Options& options);

/// Writes a line of the command's own to standard error.
void Say(const std::string& line);

/// Says what was taken in another way than it was written, or said by a partner.
void SayNotes(const Session& session, const std::vector<std::string>& notes);

/// Prints refusals, with the name of what they are about, a line each. Result: the exit code.
int Refuse(const std::string& about, const Refusals& refusals);

/// The same of a shipment, as JSON on standard output too when that is asked for.
int RefuseShipment(const Options& options, const Shipment& shipment, const Refusals& refusals);

/// Prints to standard output, at once: a partner that crashes at its end takes no bill with it.
/// Throws Broken when it cannot be written.
void Print(std::string_view text);
void PrintJson(const nlohmann::ordered_json& json);

}  // namespace cwt
