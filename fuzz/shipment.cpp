// A shipment as people write it in JSON, and their spellings of postal codes and classes.
#include "harness.h"
#include "shipment/shipment_json.h"
#include "shipment/spelling.h"

using namespace hundredweight::fuzz;

namespace {

/// What a host prints of an answer: every complaint, and the lines of a shipment.
std::string Printed(const cwt::Refusals& refusals, const cwt::Shipment& shipment) {
    std::string text;
    for (const cwt::Refusal& refusal : refusals) {
        Require(!refusal.text.empty(), "a refusal says why");
        text += cwt::RefusalText(refusal) + "\n";
    }
    if (!refusals.empty()) return text;
    for (const cwt::ShipmentLine& line : shipment.lines) {
        text += line.class_code + " " + std::to_string(line.weight) + "\n";
    }
    return text + shipment.origin.zip + " " + shipment.destination.zip;
}

void CheckSpelling(const std::string& written) {
    const std::string postal_code = cwt::SpellPostalCode(written);
    Require(cwt::SpellPostalCode(postal_code) == postal_code, "a postal code is put right once");
    const std::string class_code = cwt::SpellClass(written);
    Require(cwt::SpellClass(class_code) == class_code, "a class is put right once");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    // A block of its own, so that reading on behind the text is found.
    const std::vector<char> block(data, data + size);
    const std::string_view text(block.data(), block.size());
    cwt::Shipment first;
    cwt::Shipment second;
    const cwt::Refusals refusals = cwt::ReadShipmentJson(text, first);
    Require(Printed(refusals, first) == Printed(cwt::ReadShipmentJson(text, second), second),
            "a shipment reads alike twice");
    CheckSpelling(std::string(text));
    if (!refusals.empty()) return 0;
    Require(!first.lines.empty() && first.lines.size() <= cwt::kMostLines,
            "a shipment has 1 to 8 lines");
    for (const std::string& zip : {first.origin.zip, first.destination.zip}) {
        Require(cwt::SpellPostalCode(zip) == zip, "a shipment's postal codes are put right");
        CheckSpelling(zip);
    }
    for (const cwt::ShipmentLine& line : first.lines) CheckSpelling(line.class_code);
    return 0;
}
