#include "shipment.h"

#include <fmt/core.h>

#include <cstring>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <nlohmann/json.hpp>

#include "failure.h"
#include "field_text.h"

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
        for (const auto& [key, value] : json_.items()) {
            const bool known =
                std::any_of(keys.begin(), keys.end(), [&](const char* k) { return key == k; });
            if (!known) throw Broken(fmt::format("{}: unknown key", Way(key)));
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

    float NumberOr(const char* key, float otherwise) const {
        if (!Has(key)) return otherwise;
        const Json& value = Require(key);
        if (!value.is_number()) throw Broken(fmt::format("{}: a number is wanted", Way(key)));
        return value.get<float>();
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
    section.AllowOnly({"zip", "city", "state"});
    return {section.Text("zip"), section.TextOr("city", ""), section.TextOr("state", "")};
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
    section.AllowOnly({"description", "origin", "destination", "lines", "tariff", "factor",
                       "discount", "surcharge"});
    Shipment shipment;
    shipment.description = section.TextOr("description", "");
    shipment.origin = ReadPoint(section.Child("origin"));
    shipment.destination = ReadPoint(section.Child("destination"));
    shipment.lines = ReadLines(section.Require("lines"));
    if (section.Has("tariff")) shipment.tariff = section.Text("tariff");
    if (section.Has("factor")) shipment.factor = section.NumberOr("factor", 1);
    if (section.Has("discount")) shipment.discount = ReadDiscount(section.Child("discount"));
    if (section.Has("surcharge")) shipment.surcharge = ReadSurcharge(section.Child("surcharge"));
    return shipment;
}

void EnterTerms(const Shipment& shipment, RateContext& context) {
    if (shipment.tariff) {
        SetText(context.TariffName, "tariff", *shipment.tariff);
        // A tariff that is named is not looked up.
        context.NameTablesLoaded = 'N';
    }
    if (shipment.factor) context.RateFactor = *shipment.factor;
    context.DiscountOn = shipment.discount ? 1 : 0;
    const Discount discount = shipment.discount.value_or(Discount{});
    context.DiscountFlatPercent = discount.flat_percent;
    context.DiscountFloor = discount.floor;
    for (std::size_t i = 0; i < std::size(context.DiscountBreakPercent); ++i) {
        context.DiscountBreakPercent[i] = discount.percent;
    }
    if (shipment.surcharge) {
        context.SurchargeOn = 1;
        context.DefFactorLow = shipment.surcharge->low_percent;
        context.DefFactorHigh = shipment.surcharge->high_percent;
        SetText(context.DefBreakIndex, "surcharge.break_index",
                std::to_string(shipment.surcharge->break_index));
    }
}

}  // namespace

Shipment ReadShipment(const std::filesystem::path& path) {
    std::ifstream file(path);
    if (!file) throw Broken(fmt::format("{}: cannot be opened", path.string()));
    try {
        return ReadShipmentJson(Json::parse(file));
    } catch (const Json::exception& error) {
        throw Broken(fmt::format("{}: {}", path.string(), error.what()));
    } catch (const Broken& error) {
        throw Broken(fmt::format("{}: {}", path.string(), error.what()));
    }
}

void EnterShipment(const Shipment& shipment, RateContext& context) {
    SetText(context.OrigZip, "origin.zip", shipment.origin.zip);
    SetText(context.OrigCity, "origin.city", shipment.origin.city);
    SetText(context.OrigState, "origin.state", shipment.origin.state);
    SetText(context.DestZip, "destination.zip", shipment.destination.zip);
    SetText(context.DestCity, "destination.city", shipment.destination.city);
    SetText(context.DestState, "destination.state", shipment.destination.state);
    for (std::size_t i = 0; i < shipment.lines.size(); ++i) {
        const std::string name = fmt::format("lines[{}]", i);
        SetText(context.LineClass[i], name + ".class", shipment.lines[i].class_code);
        SetText(context.LineWeight[i], name + ".weight", std::to_string(shipment.lines[i].weight));
    }
    EnterTerms(shipment, context);
}

}  // namespace cwt
