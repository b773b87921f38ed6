#include <vector>

#include "commands/commands.h"
#include "session/look_up_documents.h"
#include "session/session.h"
#include "shipment/spelling.h"

namespace cwt {
namespace {

struct StatesOptions : Options {
    std::vector<std::string> postal_codes;
};

int States(const StatesOptions& options) {
    Session session(FindSources(options, "."));
    SayNotes(session, {});
    Refusals refusals;
    std::vector<PlacedCode> placed;
    for (const std::string& written : options.postal_codes) {
        const std::string postal_code = SpellPostalCode(written);
        StateAnswer answer = session.StateOf(postal_code);
        if (answer.refusals.empty()) {
            placed.push_back({postal_code, answer.state});
            if (!options.json) Print(postal_code + " " + answer.state + "\n");
        }
        refusals.insert(refusals.end(), answer.refusals.begin(), answer.refusals.end());
    }
    if (options.json) Print(StatesDocument(placed, refusals));
    return refusals.empty() ? kDone : Refuse("", refusals);
}

}  // namespace

void AddStates(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<StatesOptions>();
    CLI::App* command = AddCommand(app, "states", "Show what state postal codes lie in.", States,
                                   options, exit_code);
    command
        ->add_option("POSTAL_CODE", options->postal_codes,
                     "ZIP, Canadian or Mexican (64000M) postal codes.")
        ->required();
    AddData(command, *options);
    AddEngine(command, *options);
    AddJson(command, *options);
}

}  // namespace cwt
