#include "commands/commands.h"

#include <cerrno>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <system_error>

#include "commands/value_kinds.h"
#include "session/messages.h"
#include "session/session.h"
#include "shipment/shipment_file.h"
#include "text/code_page.h"
#include "text/json_writer.h"
#include "text/path_text.h"

namespace cwt {

void AddData(CLI::App* command, Options& options) {
    command
        ->add_option("--data", options.data,
                     "Directory of the tariff set, the partners' data and the profiles. "
                     "Default: the nearest one that holds a set, from the shipment's "
                     "directory (or the current one) upward.")
        ->type_name(kDirectoryValue);
    AddSet(command, options.sources.set);
}

void AddSet(CLI::App* command, std::string& set) {
    command
        ->add_option("--set", set,
                     "Base name of the tariff set. Default: the only one in the directory.")
        ->type_name(kSetValue);
}

void AddEngine(CLI::App* command, Options& options) {
    command
        ->add_option("--engine", options.sources.engine,
                     "Engine library: a path, or a name to look for beside cwt's own libraries.")
        ->type_name(kLibraryValue)
        ->capture_default_str();
}

void AddServiceGuide(CLI::App* command, Options& options) {
    command
        ->add_option("--service-guide", options.sources.service_guide,
                     "Service guide library, for shipments that ask for it.")
        ->type_name(kLibraryValue)
        ->capture_default_str();
}

void AddShipment(CLI::App* command, Options& options) {
    command
        ->add_option("SHIPMENT", options.shipment,
                     "The shipment, a JSON file; - is standard input. Postal codes: 30303, "
                     "30303-1234, M5H2N2, M5H 2N2, or for Mexico five digits and M, 64000M.")
        ->type_name(kJsonValue)
        ->required();
    AddData(command, options);
    AddEngine(command, options);
    AddServiceGuide(command, options);
}

void AddJson(CLI::App* command, Options& options) {
    command->add_flag("--json", options.json,
                      "Print JSON, a refusal too; amounts are decimal texts.");
}

Sources FindSources(const Options& options, const std::filesystem::path& start) {
    Sources sources = options.sources;
    sources.data = FindDataDirectory(PathOf(options.data), start, sources.set);
    if (sources.set.empty()) sources.set = OnlySetIn(sources.data);
    return sources;
}

ShipmentInput ReadShipmentInput(const Options& options) {
    ShipmentInput input;
    input.refusals = ReadShipmentFile(options.shipment, input.shipment);
    if (!input.refusals.empty()) return input;
    const std::filesystem::path file = PathOf(options.shipment);
    const bool standard_input = options.shipment == kStandardInput;
    input.sources = FindSources(options, standard_input ? "." : absolute(file).parent_path());
    return input;
}

void Print(std::string_view text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
        std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return;
    }
    const int reason = errno != 0 ? errno : EIO;
    throw Broken("standard output: " + std::generic_category().message(reason));
}

void Say(const std::string& line) {
    std::fputs(("cwt: " + line + "\n").c_str(), stderr);
}

void SayNotes(const Session& session, const std::vector<std::string>& notes) {
    if (!session.said().empty()) Say("note: " + session.said());
    for (const std::string& note : notes) Say("note: " + note);
}

int Refuse(const std::string& about, const Refusals& refusals) {
    const std::string name = about.empty() ? "" : Printable(about) + ": ";
    for (const Refusal& refusal : refusals) Say("refused: " + name + RefusalText(refusal));
    return kRefused;
}

int RefuseShipment(const Options& options, const Shipment& shipment, const Refusals& refusals) {
    if (options.json) PrintJson(RefusalsJson(refusals, shipment.id));
    return Refuse(options.shipment, refusals);
}

void PrintJson(const nlohmann::ordered_json& json) {
    Print(DocumentOf(json));
}

}  // namespace cwt
