#include "reference/samples/generated_shipments.h"

#include <fmt/format.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

namespace hundredweight::samples {
namespace {

using Json = nlohmann::ordered_json;

Json Point(const char* zip, const char* city, const char* state) {
    return {{"zip", zip}, {"city", city}, {"state", state}};
}

struct Lane {
    Json origin, destination;
    std::string tariff;  ///< Empty: the set names it.
};

std::vector<Lane> Lanes() {
    const Json atlanta = Point("30303", "Atlanta", "GA"), chicago = Point("60601", "Chicago", "IL"),
               new_york = Point("10001", "New York", "NY"), dallas = Point("75201", "Dallas", "TX"),
               los_angeles = Point("90012", "Los Angeles", "CA"),
               toronto = Point("M5H2N2", "Toronto", "ON");
    return {{atlanta, chicago, "SMPLNATL"}, {chicago, atlanta, "SMPLNATL"},
            {new_york, atlanta, ""},        {chicago, toronto, "SMPLNATL"},
            {atlanta, dallas, "SMPLFAK1"},  {new_york, los_angeles, "SMPLWIDE"},
            {los_angeles, new_york, ""},    {toronto, chicago, ""}};
}

/// Ways in which a shipment can be wrong or unusual.
constexpr void (*kSpoilers[])(Json&) = {
    [](Json& shipment) { shipment["lines"][0]["class"] = "71"; },
    [](Json& shipment) { shipment["lines"][0]["class"] = "FAK"; },
    [](Json& shipment) { shipment["lines"][0]["weight"] = 999999; },
    [](Json& shipment) { shipment["destination"]["zip"] = "6060A"; },
    [](Json& shipment) { shipment["origin"]["zip"] = "99999"; },
    [](Json& shipment) { shipment["origin"].erase("state"); },
    [](Json& shipment) { shipment["destination"]["city"] = "Nowhere"; },
    [](Json& shipment) { shipment["origin"]["territory"] = "D"; },
    [](Json& shipment) { shipment["destination"]["intrastate"] = false; },
    [](Json& shipment) {
        shipment["discount"] = {{"percent", 100}};
    },
    [](Json& shipment) {
        shipment["discount"] = {{"floor", 1000}};
    },
    [](Json& shipment) { shipment["profile"] = "Nobody"; },
    [](Json& shipment) { shipment["profile"] = "Default"; },
    [](Json& shipment) { shipment["tariff"] = "SMPLNONE"; },
};

class Generator {
    std::minstd_rand random_;

    int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    bool OneIn(int count) { return Below(count) == 0; }
    double Percent() { return Below(10000) / 100.0; }

    template <class Choices>
    const auto& Pick(const Choices& choices) {
        return choices[static_cast<std::size_t>(Below(static_cast<int>(std::size(choices))))];
    }

 public:
    Json Shipment() {
        const auto& [origin, destination, tariff] = Pick(lanes_);
        Json shipment = {{"origin", origin}, {"destination", destination}};
        shipment["lines"] = Lines();
        if (!tariff.empty()) shipment["tariff"] = tariff;
        if (OneIn(2)) shipment["discount"] = Discount();
        if (OneIn(3)) shipment["factor"] = Below(20000) / 10000.0;
        if (OneIn(3)) {
            shipment["surcharge"] = {{"low_percent", Percent()},
                                     {"high_percent", Percent()},
                                     {"break_index", Below(20)}};
        }
        if (OneIn(8)) shipment["profile"] = "Northeast";
        if (OneIn(8)) shipment["service_guide"] = true;
        if (OneIn(4)) Pick(kSpoilers)(shipment);
        return shipment;
    }

 private:
    Json Lines() {
        static constexpr const char* kClasses[] = {"500", "400", "300", "250", "200", "175",
                                                   "150", "125", "110", "100", "92",  "85",
                                                   "77",  "70",  "65",  "60",  "55",  "50"};
        static constexpr int kHighestWeights[] = {60, 700, 5000, 45000};
        const int highest = Pick(kHighestWeights);
        Json lines = Json::array();
        for (int i = 1 + Below(8); i > 0; --i) {
            lines.push_back({{"class", Pick(kClasses)}, {"weight", 1 + Below(highest)}});
        }
        return lines;
    }

    Json Discount() {
        Json discount = {{"percent", Percent()}};
        if (OneIn(3)) discount["flat_percent"] = Percent();
        if (OneIn(3)) discount["floor"] = Below(99999) / 100.0;
        return discount;
    }

    const std::vector<Lane> lanes_ = Lanes();
};

}  // namespace

void WriteGeneratedRows(int count, const std::function<void(const std::string&)>& write) {
    Generator generator;
    for (int i = 1; i <= count; ++i) {
        Json shipment = {{"id", fmt::format("G{}", i)}};
        shipment.update(generator.Shipment());
        write(shipment.dump() + '\n');
    }
}

void WriteGeneratedShipments(const std::filesystem::path& directory, int count) {
    std::filesystem::create_directories(directory);
    Generator generator;
    for (int i = 0; i < count; ++i) {
        std::ofstream file(directory / fmt::format("{:03}.json", i), std::ios::binary);
        file << generator.Shipment().dump(2) << '\n';
    }
}

}  // namespace hundredweight::samples
