#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "reference/samples/file_contents.h"

namespace hundredweight::samples {
namespace {

using Json = nlohmann::ordered_json;

Json Point(const char* zip, const char* city, const char* state) {
    return {{"zip", zip}, {"city", city}, {"state", state}};
}

const Json kAtlanta = Point("30303", "Atlanta", "GA");
const Json kChicago = Point("60601", "Chicago", "IL");
const Json kDallas = Point("75201", "Dallas", "TX");
const Json kNewYork = Point("10001", "New York", "NY");
const Json kLosAngeles = Point("90012", "Los Angeles", "CA");
const Json kToronto = Point("M5H2N2", "Toronto", "ON");

struct Line {
    const char* class_code;
    int weight;  ///< Pounds.
};

struct Shipment {
    const char* name;
    const char* description;
    Json origin;
    Json destination;
    std::string tariff;  ///< Empty: the set names it.
    std::vector<Line> lines;
    Json terms = Json::object();
};

// clang-format off
std::vector<Shipment> SampleShipments() {
    const Json by_weight = {{"low_percent", 18.5}, {"high_percent", 12.0}, {"break_index", 6}};
    return {
        {"01-deficit-and-discount",
         "Two classes just short of 2000 pounds: rated as 2000, less 45.5 percent",
         kAtlanta, kChicago, "SMPLNATL", {{"70", 1205}, {"100", 695}},
         {{"discount", {{"percent", 45.5}}}}},
        {"02-minimum-charge", "A small shipment that the minimum charge applies to",
         kAtlanta, kChicago, "SMPLNATL", {{"85", 95}}},
        {"03-eight-lines", "Every line in use",
         kChicago, kAtlanta, "SMPLNATL",
         {{"50", 1000}, {"55", 850}, {"60", 720}, {"70", 400}, {"85", 310}, {"100", 260},
          {"150", 120}, {"300", 45}}},
        {"04-flat-discount", "A flat discount, which goes before that of the weight break",
         kNewYork, kAtlanta, "SMPLNATL", {{"92", 640}},
         {{"discount", {{"percent", 30.0}, {"flat_percent", 12.5}}}}},
        {"05-discount-floor", "A deep discount with a floor",
         kAtlanta, kChicago, "SMPLNATL", {{"65", 480}},
         {{"discount", {{"percent", 72.0}, {"floor", 125.0}}}}},
        {"06-rate-factor", "Rates raised by five percent",
         kChicago, kAtlanta, "SMPLNATL", {{"77", 3150}, {"125", 415}}, {{"factor", 1.05}}},
        {"07-surcharge-high", "A heavy shipment with the surcharge of the higher weights",
         kAtlanta, kChicago, "SMPLNATL", {{"50", 21500}}, {{"surcharge", by_weight}}},
        {"08-surcharge-low", "A light shipment with the surcharge of the lower weights",
         kAtlanta, kChicago, "SMPLNATL", {{"110", 1650}}, {{"surcharge", by_weight}}},
        {"09-all-kinds", "A tariff of one rate for freight of all kinds",
         kAtlanta, kDallas, "SMPLFAK1", {{"70", 2100}, {"125", 300}}},
        {"10-many-breaks", "A tariff of eleven weight breaks",
         kNewYork, kLosAngeles, "SMPLWIDE", {{"60", 8450}}, {{"discount", {{"percent", 55.0}}}}},
        {"11-canada", "A destination with a letter postal code",
         kChicago, kToronto, "SMPLNATL", {{"100", 5200}}},
        {"12-origin-city-open", "No origin city chosen: the engine offers those at the postal code",
         Point("30339", "None of the above", "**"), kChicago, "SMPLNATL", {{"70", 900}}},
        {"13-destination-city-unknown",
         "A destination city that is not at its postal code: the engine offers those that are",
         kAtlanta, Point("60521", "Evanston", "IL"), "SMPLNATL", {{"70", 900}}},
        {"14-unknown-lane", "Refused: the tariff has no rates between these points",
         kLosAngeles, kNewYork, "SMPLWIDE", {{"70", 1000}}},
        {"15-unknown-class", "Refused: there is no class 72",
         kAtlanta, kChicago, "SMPLNATL", {{"72", 1000}}},
        {"16-whole-road", "The set names the tariff, the guide the terminals, a profile the discount",
         kNewYork, kAtlanta, "", {{"100", 1250}, {"70", 300}},
         {{"profile", "Northeast"}, {"service_guide", true}}},
        {"17-many-faults", "Refused: a postal code and two lines are wrong",
         kAtlanta, Point("6060A", "Chicago", "IL"), "SMPLNATL",
         {{"71", 500}, {"70", 900}, {"FAK9", 100}}},
    };
}
// clang-format on

Json ToJson(const Shipment& shipment) {
    Json json{{"description", shipment.description},
              {"origin", shipment.origin},
              {"destination", shipment.destination},
              {"lines", Json::array()}};
    for (const Line& line : shipment.lines) {
        json["lines"].push_back({{"class", line.class_code}, {"weight", line.weight}});
    }
    if (!shipment.tariff.empty()) json["tariff"] = shipment.tariff;
    json.update(shipment.terms);
    return json;
}

}  // namespace

FileContents Shipments() {
    FileContents files;
    for (const Shipment& shipment : SampleShipments()) {
        files[std::string(shipment.name) + ".json"] = ToJson(shipment).dump(2) + "\n";
    }
    return files;
}

}  // namespace hundredweight::samples
