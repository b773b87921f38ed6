#include "bill/record_text.h"
#include "commands/commands.h"
#include "session/messages.h"
#include "session/session.h"

namespace cwt {
namespace {

constexpr int kHighestRequestCode = 99;

struct RateOptions : Options {
    int request_code = 0;
    bool record = false;
    bool explain = false;
};

int Explain(const RateOptions& options, const Shipment& shipment, Session& session) {
    const ExplainedOutcome outcome = session.Explain(shipment, options.request_code);
    if (const auto* refusals = std::get_if<Refusals>(&outcome)) {
        return RefuseShipment(options, shipment, *refusals);
    }
    const auto& explained = std::get<ExplainedBill>(outcome);
    SayNotes(session, explained.bill.notes);
    if (options.json) {
        Print(ExplanationDocument(explained.bill, explained.explanation));
    } else {
        Print(BillText(explained.bill) + '\n' + ExplanationText(explained.explanation));
    }
    return kDone;
}

int Rate(const RateOptions& options) {
    const ShipmentInput input = ReadShipmentInput(options);
    if (!input.refusals.empty()) return RefuseShipment(options, input.shipment, input.refusals);
    Session session(input.sources);
    if (options.explain) return Explain(options, input.shipment, session);
    const Outcome outcome = session.Rate(input.shipment, options.request_code);
    if (const auto* refusals = std::get_if<Refusals>(&outcome)) {
        return RefuseShipment(options, input.shipment, *refusals);
    }
    const Bill& bill = std::get<Bill>(outcome);
    SayNotes(session, bill.notes);
    if (options.record) {
        Print(RecordText(session.context()));
    } else if (options.json) {
        Print(BillDocument(bill));
    } else {
        Print(BillText(bill));
    }
    return kDone;
}

}  // namespace

void AddRate(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<RateOptions>();
    CLI::App* command =
        AddCommand(app, "rate", "Rate a shipment and print its bill.", Rate, options, exit_code);
    AddShipment(command, *options);
    command->add_option("--request-code", options->request_code, "Code passed on to the engine.")
        ->check(CLI::Range(0, kHighestRequestCode))
        ->capture_default_str();
    AddJson(command, *options);
    command
        ->add_flag("--record", options->record,
                   "Print the library's record instead: the fields that are set, in hexadecimal.")
        ->excludes(command->get_option("--json"));
    command
        ->add_flag("--explain", options->explain,
                   "Tell behind the bill why it says what it says, and where each figure comes "
                   "from.")
        ->excludes(command->get_option("--record"));
}

}  // namespace cwt
