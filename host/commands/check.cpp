#include "commands/commands.h"
#include "session/session.h"

namespace cwt {
namespace {

/// Goes the whole road of a rating, so that what is called valid can be rated.
int Check(const Options& options) {
    const ShipmentInput input = ReadShipmentInput(options);
    if (!input.refusals.empty()) return RefuseShipment(options, input.shipment, input.refusals);
    Session session(input.sources);
    const Outcome outcome = session.Rate(input.shipment, 0);
    if (const auto* refusals = std::get_if<Refusals>(&outcome)) {
        return RefuseShipment(options, input.shipment, *refusals);
    }
    const Bill& bill = std::get<Bill>(outcome);
    SayNotes(session, bill.notes);
    if (options.json) {
        Print(CheckDocument(bill));
    } else {
        Print("The shipment is valid.\n");
    }
    return kDone;
}

}  // namespace

void AddCheck(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = AddCommand(
        app, "check", "Check a shipment: whether it can be rated, and all that is wrong.", Check,
        options, exit_code);
    AddShipment(command, *options);
    AddJson(command, *options);
}

}  // namespace cwt
