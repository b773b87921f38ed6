// A shipment as a value.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace cwt {

inline constexpr std::size_t kMostLines = 8;

struct Point {
    std::string zip;  ///< Postal code, as SpellPostalCode leaves it.
    std::string city;
    std::string state;            ///< Empty: that of the postal code.
    std::string territory = "B";  ///< Served as origin and as destination.
    bool intrastate = true;       ///< Of an origin: it serves points in its own state.
};

struct ShipmentLine {
    std::string class_code;
    int weight = 0;  ///< Pounds.
};

/// Values that the user enters for one shipment.
struct Discount {
    double percent = 0;  ///< At every weight break.
    double flat_percent = 0;
    double floor = 0;  ///< Dollars.
};

struct Surcharge {
    double low_percent = 0;   ///< Below the surcharge break.
    double high_percent = 0;  ///< From the surcharge break on.
    int break_index = 0;      ///< Of the tariff's weight breaks, from 0.
};

struct Shipment {
    std::string id;  ///< The sender's own; empty when there is none.
    std::string description;
    Point origin;
    Point destination;
    std::vector<ShipmentLine> lines;  ///< 1 to kMostLines.
    std::optional<std::string> tariff;
    std::optional<std::string> profile;
    std::optional<double> factor;
    std::optional<Discount> discount;
    std::optional<Surcharge> surcharge;
    bool service_guide = false;  ///< Ask for terminals and service codes.
};

}  // namespace cwt
