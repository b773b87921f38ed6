#include "shipment/shipment_json.h"

#include <fmt/core.h>

#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <type_traits>

#include "shipment/json_document.h"
#include "shipment/spelling.h"
#include "text/code_page.h"
#include "text/decimals.h"
#include "text/nearest_word.h"

namespace cwt {
namespace {

using JsonValue = nlohmann::json;

constexpr int kHighestWeight = 999999;
constexpr int kHighestBreakIndex = 19;
constexpr const char* kShipmentSchema = "hundredweight/shipment/1";

/// A JSON object with the way to it. Whatever is not as it should be becomes a refusal, and its
/// value a default, so that one reading finds all faults.
class Section {
 public:
    Section(const JsonValue& json, std::string place, Refusals& refusals)
        : json_(json), place_(std::move(place)), refusals_(refusals) {
        if (!json_.is_object()) refusals_.push_back({place_, "a JSON object is wanted"});
    }

    /// Refuses a key that nobody reads, most likely a slip of the pen.
    void AllowOnly(std::initializer_list<std::string_view> keys) const {
        for (const auto& item : json_.items()) {
            if (std::find(keys.begin(), keys.end(), item.key()) != keys.end()) continue;
            refusals_.push_back(
                {Way(Printable(item.key())), "unknown key", 0, "", NearestWord(item.key(), keys)});
        }
    }

    bool Has(const char* key) const { return json_.contains(key); }

    /// The value that `read` makes of an object below this one.
    template <class Read>
    auto Child(const char* key, Read read) const {
        const JsonValue& json = Require(key, "an object");
        if (!Has(key)) return decltype(read(*this))();
        const Section child(json, Way(key), refusals_);
        return json.is_object() ? read(child) : decltype(read(child))();
    }

    const JsonValue& Require(const char* key, const char* wanted) const {
        return Require(key, [&] { return wanted; });
    }

    /// The same, with a text that takes a while to make.
    template <class Wanted>
    requires std::is_invocable_v<Wanted>
    const JsonValue& Require(const char* key, Wanted wanted) const {
        const auto found = json_.find(key);
        if (found != json_.end()) return *found;
        Refuse(key, fmt::format("missing: {} is wanted", wanted()));
        return kNothing;
    }

    std::string Text(const char* key) const {
        const JsonValue& value = Require(key, "a text");
        if (value.is_string()) {
            return std::string(WithoutBlanksAround(value.get_ref<const std::string&>()));
        }
        if (Has(key)) Refuse(key, "a text is wanted");
        return {};
    }

    std::string TextOr(const char* key, const std::string& otherwise) const {
        return Has(key) ? Text(key) : otherwise;
    }

    /// A text or a whole number; empty when there is none.
    std::string Identifier(const char* key) const {
        if (!Has(key)) return {};
        const JsonValue& value = json_.at(key);
        if (value.is_number_integer()) return value.dump();
        return Text(key);
    }

    std::string PostalCode(const char* key) const {
        const JsonValue& value = Require(key, "a postal code");
        if (value.is_string()) return SpellPostalCode(value.get<std::string>());
        if (value.is_number_integer()) return SpellZipNumber(value.get<int64_t>());
        if (Has(key)) Refuse(key, "a postal code is wanted, such as \"30303\" or \"M5H2N2\"");
        return {};
    }

    /// A class, which may be written as a number.
    std::string Class(const char* key) const {
        const JsonValue& value = Require(key, "a class");
        if (value.is_string()) return SpellClass(value.get<std::string>());
        if (value.is_number()) return SpellClass(fmt::format("{}", value.get<double>()));
        if (Has(key)) Refuse(key, "a class is wanted, such as \"70\" or 77.5");
        return {};
    }

    int Integer(const char* key, int low, int high) const {
        const auto wanted = [&] { return fmt::format("a whole number from {} to {}", low, high); };
        const JsonValue& value = Require(key, wanted);
        const double number = value.is_number() ? value.get<double>() : std::nan("");
        if (number >= low && number <= high && HasDecimals(number, 0)) {
            return static_cast<int>(number);
        }
        if (Has(key)) Refuse(key, wanted() + " is wanted");
        return low;
    }

    double Number(const char* key) const {
        const JsonValue& value = json_.at(key);
        if (value.is_number()) return value.get<double>();
        Refuse(key, "a number is wanted");
        return 0;
    }

    /// A number that a field of the record holds with so many decimals; 0 when there is none.
    double Decimal(const char* key, int decimals) const {
        if (!Has(key)) return 0;
        const JsonValue& value = json_.at(key);
        if (value.is_number() && HasDecimals(value.get<double>(), decimals)) {
            return value.get<double>();
        }
        Refuse(key, fmt::format("a number of at most {} decimals is wanted", decimals));
        return 0;
    }

    bool FlagOr(const char* key, bool otherwise) const {
        if (!Has(key)) return otherwise;
        const JsonValue& value = json_.at(key);
        if (value.is_boolean()) return value.get<bool>();
        Refuse(key, "true or false is wanted");
        return otherwise;
    }

    void Refuse(const char* key, const std::string& text) const {
        refusals_.push_back({Way(key), text});
    }

 private:
    std::string Way(const std::string& key) const {
        return place_.empty() ? key : place_ + "." + key;
    }

    inline static const JsonValue kNothing;

    const JsonValue& json_;
    std::string place_;
    Refusals& refusals_;
};

Point ReadPointFields(const Section& section) {
    Point point;
    point.zip = section.PostalCode("zip");
    point.city = section.TextOr("city", "");
    point.state = section.TextOr("state", "");
    point.territory = section.TextOr("territory", point.territory);
    return point;
}

Point ReadOrigin(const Section& section) {
    section.AllowOnly({"zip", "city", "state", "territory", "intrastate"});
    Point point = ReadPointFields(section);
    point.intrastate = section.FlagOr("intrastate", point.intrastate);
    return point;
}

Point ReadDestination(const Section& section) {
    section.AllowOnly({"zip", "city", "state", "territory"});
    return ReadPointFields(section);
}

std::vector<ShipmentLine> ReadLines(const Section& shipment, Refusals& refusals) {
    const auto wanted = [] { return fmt::format("a list of 1 to {} lines", kMostLines); };
    const JsonValue& lines = shipment.Require("lines", wanted);
    std::vector<ShipmentLine> read;
    if (!lines.is_array() || lines.empty() || lines.size() > kMostLines) {
        if (shipment.Has("lines")) shipment.Refuse("lines", wanted() + " is wanted");
        return read;
    }
    for (const JsonValue& line : lines) {
        const Section section(line, fmt::format("lines[{}]", read.size()), refusals);
        read.emplace_back();
        if (!line.is_object()) continue;
        section.AllowOnly({"class", "weight"});
        read.back() = {section.Class("class"), section.Integer("weight", 1, kHighestWeight)};
    }
    return read;
}

Discount ReadDiscount(const Section& section) {
    section.AllowOnly({"percent", "flat_percent", "floor"});
    return {section.Decimal("percent", 2), section.Decimal("flat_percent", 2),
            section.Decimal("floor", 2)};
}

/// A share of the charge. The record has room for seven digits of it.
double ReadPercent(const Section& section, const char* key) {
    constexpr double kHighest = 999.9999;
    const double percent = section.Decimal(key, 4);
    if (percent >= 0 && percent <= kHighest) return percent;
    section.Refuse(key, fmt::format("a percentage from 0 to {} is wanted", kHighest));
    return 0;
}

Surcharge ReadSurcharge(const Section& section) {
    section.AllowOnly({"low_percent", "high_percent", "break_index"});
    return {ReadPercent(section, "low_percent"), ReadPercent(section, "high_percent"),
            section.Integer("break_index", 0, kHighestBreakIndex)};
}

}  // namespace

Refusals ReadShipmentJson(std::string_view text, Shipment& shipment) {
    Refusals refusals;
    const JsonValue json = ParseJson(text, refusals);
    if (!json.is_null() || refusals.empty()) ReadShipment(json, shipment, refusals);
    return refusals;
}

void ReadShipment(const JsonValue& json, Shipment& shipment, Refusals& refusals) {
    const Section section(json, "", refusals);
    if (!json.is_object()) return;
    section.AllowOnly({"schema", "id", "description", "origin", "destination", "lines", "tariff",
                       "profile", "factor", "discount", "surcharge", "service_guide"});
    if (section.TextOr("schema", kShipmentSchema) != kShipmentSchema) {
        section.Refuse("schema", fmt::format("\"{}\" is wanted", kShipmentSchema));
    }
    shipment.id = section.Identifier("id");
    shipment.description = section.TextOr("description", "");
    shipment.origin = section.Child("origin", ReadOrigin);
    shipment.destination = section.Child("destination", ReadDestination);
    shipment.lines = ReadLines(section, refusals);
    if (section.Has("tariff")) shipment.tariff = section.Text("tariff");
    if (section.Has("profile")) shipment.profile = section.Text("profile");
    shipment.service_guide = section.FlagOr("service_guide", false);
    if (section.Has("factor")) shipment.factor = section.Number("factor");
    if (section.Has("discount")) shipment.discount = section.Child("discount", ReadDiscount);
    if (section.Has("surcharge")) shipment.surcharge = section.Child("surcharge", ReadSurcharge);
}

}  // namespace cwt
