// Shipments as people write them in JSON and CSV, and their spellings of postal codes and classes.
#include "harness.h"
#include "shipment/shipment_json.h"
#include "shipment/shipment_reader.h"
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

/// Every byte of a table behind its header is in one row, and every row is read or refused.
void CheckTable(std::string_view text) {
    const std::string header = "id,origin_zip,destination_zip,class_1,weight_1,own,tariff\n";
    const auto reader = cwt::MakeCsvReader(header, {});
    try {
        cwt::MakeCsvReader(text, {});
    } catch (const std::runtime_error&) {
        // As a header it is mostly none.
    }
    while (!text.empty()) {
        const std::size_t end = reader->RowEnd(text, true);
        Require(end > 0 && end <= text.size(), "a row ends behind where it begins");
        const std::size_t early = reader->RowEnd(text.substr(0, end), false);
        Require(early == text.npos || early == end, "a row ends where it ends in part");
        cwt::Shipment shipment;
        std::vector<std::string> passed;
        Printed(reader->Read(text.substr(0, end), shipment, passed), shipment);
        text.remove_prefix(end);
    }
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
    CheckTable(text);
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
