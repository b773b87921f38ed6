// A shipment as a JSON file describes it.
#pragma once

#include <hundredweight/rate_context.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace cwt {

struct Point {
    std::string zip;
    std::string city;
    std::string state;
};

struct ShipmentLine {
    std::string class_code;
    int weight = 0;  ///< Pounds.
};

struct Discount {
    float percent = 0;  ///< At every weight break.
    float flat_percent = 0;
    float floor = 0;  ///< Dollars.
};

struct Surcharge {
    float low_percent = 0;   ///< Below the surcharge break.
    float high_percent = 0;  ///< From the surcharge break on.
    int break_index = 0;     ///< Of the tariff's weight breaks, from 0.
};

struct Shipment {
    std::string description;
    Point origin;
    Point destination;
    std::vector<ShipmentLine> lines;
    std::optional<std::string> tariff;
    std::optional<float> factor;
    std::optional<Discount> discount;
    std::optional<Surcharge> surcharge;
};

/// Reads and checks a file. Throws Broken with the name of what is wrong.
Shipment ReadShipment(const std::filesystem::path& path);

/// Writes a shipment into the record of a run.
void EnterShipment(const Shipment& shipment, RateContext& context);

}  // namespace cwt
