#include "shipment/shipment.h"

#include <fmt/core.h>

#include <cstring>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <nlohmann/json.hpp>

#include "session/failure.h"
#include "text/field_text.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kLines = 8;
constexpr int kHighestWeight = 999999;

/// A JSON object with the way to it, for complaints.
class Section {
 public:
    Section(const Json& json, std::string name) : json_(json), name_(std::move(name)) {
        if (!json_.is_object()) throw Broken(name_ + ": an object is wanted");
    }

    /// Refuses a key that nobody reads, most likely a slip of the pen.
    void AllowOnly(std::initializer_list<const char*> keys) const {
        for (const auto& item : json_.items()) {
            const bool known = std::find(keys.begin(), keys.end(), item.key()) != keys.end();
            if (!known) throw Broken(fmt::format("{}: unknown key", Way(item.key())));
        }
    }

    bool Has(const char* key) const { return json_.contains(key); }

    Section Child(const char* key) const { return {Require(key), Way(key)}; }

    std::string Text(const char* key) const {
        const Json& value = Require(key);
        if (value.is_string()) return value.get<std::string>();
        if (value.is_number_integer()) return std::to_string(value.get<long long>());
        throw Broken(fmt::format("{}: a text is wanted", Way(key)));
    }

    std::string TextOr(const char* key, const char* otherwise) const {
        return Has(key) ? Text(key) : otherwise;
    }

    int Integer(const char* key, int low, int high) const {
        const Json& value = Require(key);
        const bool integer = value.is_number_integer();
        const auto number = integer ? value.get<long long>() : 0;
        if (!integer || number < low || number > high) {
            throw Broken(
                fmt::format("{}: a whole number from {} to {} is wanted", Way(key), low, high));
        }
        return static_cast<int>(number);
    }

    double NumberOr(const char* key, double otherwise) const {
        if (!Has(key)) return otherwise;
        const Json& value = Require(key);
        if (!value.is_number()) throw Broken(fmt::format("{}: a number is wanted", Way(key)));
        return value.get<double>();
    }

    bool FlagOr(const char* key, bool otherwise) const {
        if (!Has(key)) return otherwise;
        const Json& value = Require(key);
        if (!value.is_boolean()) throw Broken(fmt::format("{}: true or false is wanted", Way(key)));
        return value.get<bool>();
    }

    const Json& Require(const char* key) const {
        const auto found = json_.find(key);
        if (found == json_.end()) throw Broken(fmt::format("{}: missing", Way(key)));
        return *found;
    }

    std::string Way(const std::string& key) const {
        return name_.empty() ? key : name_ + "." + key;
    }

 private:
    const Json& json_;
    std::string name_;
};

Point ReadPoint(const Section& section) {
    section.AllowOnly({"zip", "city", "state", "territory", "intrastate"});
    Point point;
    point.zip = section.Text("zip");
    point.city = section.TextOr("city", "");
    point.state = section.TextOr("state", "");
    point.territory = section.TextOr("territory", point.territory.c_str());
    point.intrastate = section.FlagOr("intrastate", point.intrastate);
    return point;
}

std::vector<ShipmentLine> ReadLines(const Json& lines) {
    if (!lines.is_array() || lines.empty() || lines.size() > kLines) {
        throw Broken(fmt::format("lines: a list of 1 to {} lines is wanted", kLines));
    }
    std::vector<ShipmentLine> read;
    for (const Json& line : lines) {
        const Section section(line, fmt::format("lines[{}]", read.size()));
        section.AllowOnly({"class", "weight"});
        read.push_back({section.Text("class"), section.Integer("weight", 1, kHighestWeight)});
    }
    return read;
}

Discount ReadDiscount(const Section& section) {
    section.AllowOnly({"percent", "flat_percent", "floor"});
    return {section.NumberOr("percent", 0), section.NumberOr("flat_percent", 0),
            section.NumberOr("floor", 0)};
}

Surcharge ReadSurcharge(const Section& section) {
    section.AllowOnly({"low_percent", "high_percent", "break_index"});
    return {section.NumberOr("low_percent", 0), section.NumberOr("high_percent", 0),
            section.Integer("break_index", 0, 19)};
}

Shipment ReadShipmentJson(const Json& json) {
    const Section section(json, "");
    section.AllowOnly({"description", "origin", "destination", "lines", "tariff", "profile",
                       "factor", "discount", "surcharge", "service_guide"});
    Shipment shipment;
    shipment.description = section.TextOr("description", "");
    shipment.origin = ReadPoint(section.Child("origin"));
    shipment.destination = ReadPoint(section.Child("destination"));
    shipment.lines = ReadLines(section.Require("lines"));
    if (section.Has("tariff")) shipment.tariff = section.Text("tariff");
    if (section.Has("profile")) shipment.profile = section.Text("profile");
    shipment.service_guide = section.FlagOr("service_guide", false);
    if (section.Has("factor")) shipment.factor = section.NumberOr("factor", 1);
    if (section.Has("discount")) shipment.discount = ReadDiscount(section.Child("discount"));
    if (section.Has("surcharge")) shipment.surcharge = ReadSurcharge(section.Child("surcharge"));
    return shipment;
}

template <std::size_t ZipSize, std::size_t CitySize, std::size_t StateSize>
void EnterPlace(const Point& point, const std::string& name, char (&zip)[ZipSize],
                char (&city)[CitySize], char (&state)[StateSize]) {
    SetText(zip, name + ".zip", point.zip);
    SetText(city, name + ".city", point.city);
    SetText(state, name + ".state", point.state);
    RequireRoom(name + ".territory", point.territory, 1);
}

char Letter(const std::string& text) {
    return text.empty() ? ' ' : text.front();
}

/// A percentage or amount as the record's texts hold it.
template <std::size_t Size>
void SetNumber(char (&field)[Size], std::string_view what, double value) {
    SetText(field, what, fmt::format("{:.2f}", value));
}

/// Switches the entered values on, over what profile and defaults say.
void EnterDiscount(const Discount& discount, RateContext& context) {
    context.DiscountOn = 1;
    context.Profile.DiscModeP = 1;
    SetNumber(context.EntryDiscountPercent, "discount.percent", discount.percent);
    SetNumber(context.EntryFlatPercent, "discount.flat_percent", discount.flat_percent);
    SetNumber(context.EntryFloor, "discount.floor", discount.floor);
}

void EnterSurcharge(const Surcharge& surcharge, RateContext& context) {
    context.SurchargeOn = 1;
    context.DefFactorLow = static_cast<float>(surcharge.low_percent);
    context.DefFactorHigh = static_cast<float>(surcharge.high_percent);
    SetText(context.DefBreakIndex, "surcharge.break_index", std::to_string(surcharge.break_index));
}

/// The discounts that the user enters have limits of their own, with the library's messages.
void CheckDiscount(const Discount& discount) {
    constexpr int32_t kDiscountTooHigh = 118;
    constexpr int32_t kFloorTooHigh = 119;
    const auto in_range = [](double value, double highest) {
        return value >= 0 && value <= highest;
    };
    if (!in_range(discount.percent, 99.99) || !in_range(discount.flat_percent, 99.99)) {
        throw Refused("discount: " + Describe(kDiscountTooHigh));
    }
    if (!in_range(discount.floor, 999.99)) {
        throw Refused("discount.floor: " + Describe(kFloorTooHigh));
    }
}

}  // namespace

Shipment ReadShipment(const std::filesystem::path& path) {
    std::ifstream file(path);
    if (!file) throw Broken(fmt::format("{}: cannot be opened", PathText(path)));
    try {
        return ReadShipmentJson(Json::parse(file));
    } catch (const Json::exception& error) {
        throw Broken(fmt::format("{}: {}", PathText(path), error.what()));
    } catch (const Broken& error) {
        throw Broken(fmt::format("{}: {}", PathText(path), error.what()));
    }
}

void EnterShipment(const Shipment& shipment, RateContext& context) {
    const Point& origin = shipment.origin;
    const Point& destination = shipment.destination;
    EnterPlace(origin, "origin", context.OrigZip, context.OrigCity, context.OrigState);
    EnterPlace(destination, "destination", context.DestZip, context.DestCity, context.DestState);
    context.OrigTerritory = Letter(origin.territory);
    context.DestTerritory = Letter(destination.territory);
    context.OrigIntrastate = origin.intrastate ? 'Y' : 'N';
    for (std::size_t i = 0; i < shipment.lines.size(); ++i) {
        const std::string name = fmt::format("lines[{}]", i);
        SetText(context.LineClass[i], name + ".class", shipment.lines[i].class_code);
        SetText(context.LineWeight[i], name + ".weight", std::to_string(shipment.lines[i].weight));
    }
    if (shipment.factor) context.RateFactor = static_cast<float>(*shipment.factor);
    if (shipment.discount) {
        CheckDiscount(*shipment.discount);
        EnterDiscount(*shipment.discount, context);
    }
    if (shipment.surcharge) EnterSurcharge(*shipment.surcharge, context);
}

}  // namespace cwt
