#include <nlohmann/json.hpp>

#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "session/inspection.h"
#include "session/messages.h"

namespace cwt {
namespace {

struct InspectOptions : Options {
    bool without_engine = false;
    bool without_service_guide = false;
    bool states = false;
};

int Inspect(const InspectOptions& options) {
    const nlohmann::ordered_json inspection = Inspect(
        FindSources(options, "."), {!options.without_engine, !options.without_service_guide});
    if (options.json) {
        PrintJson(inspection);
    } else {
        Print(InspectionText(inspection, options.states));
    }
    const nlohmann::ordered_json& failure = inspection["failure"];
    if (failure.is_null()) return kDone;
    throw Broken(FailureText(failure));
}

}  // namespace

void AddInspect(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<InspectOptions>();
    CLI::App* command = AddCommand(app, "inspect",
                                   "Show what is in a tariff set, whether it loads, and whether "
                                   "the partners start on its directory.",
                                   Inspect, options, exit_code);
    command
        ->add_option("DIRECTORY", options->data,
                     "Where the set is. Default: the nearest directory that holds it, from the "
                     "current one upward.")
        ->type_name(kDirectoryValue);
    AddSet(command, options->sources.set);
    AddEngine(command, *options);
    AddServiceGuide(command, *options);
    command->add_flag("--without-engine", options->without_engine,
                      "Load what a host needs that rates by the set's own tables, and start no "
                      "partner.");
    command->add_flag("--without-service-guide", options->without_service_guide,
                      "Do not start the service guide.");
    command->add_flag("--states", options->states, "Show the states by postal-code prefix too.");
    AddJson(command, *options);
}

}  // namespace cwt
