// A freight bill as a value, with the field's terms.
#pragma once

#include <hundredweight/rate_context.h>

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "bill/money.h"
#include "shipment/refusal.h"

namespace cwt {

class JsonWriter;

/// Weights are whole pounds, rates dollars per hundredweight, charges dollars: decimal texts.
struct BillLine {
    std::string class_code;  ///< As entered.
    std::string rated_as;    ///< Another where a profile put one in its place.
    int weight = 0;
    std::string rate;
    std::string charge;
};

struct BillPoint {
    std::string zip;
    std::string city;
    std::string state;
    std::string terminal;  ///< Empty when no service guide was asked.
    std::string service;
};

/// Business days between the terminals, where the service guide knows them.
struct TransitDays {
    std::optional<int> standard;
    std::optional<int> guaranteed;
    std::optional<int> border;  ///< Added at the border.
};

/// What the shipment would come to at a weight break.
struct BreakCharge {
    std::string label;
    int weight = 0;  ///< Lowest weight of the break.
    int amount = 0;  ///< Whole dollars.
    bool raised_to_floor = false;
};

struct Bill {
    std::string id;  ///< The shipment's.
    std::string description;
    std::string tariff;
    std::string date;  ///< MM-DD-YYYY.
    std::string rate_code;
    BillPoint origin;
    BillPoint destination;
    std::optional<TransitDays> transit_days;  ///< When the service guide was asked.
    std::vector<BillLine> lines;
    BillLine deficit;  ///< Weight 0 when there is none.
    int total_weight = 0;
    int billed_weight = 0;
    std::string gross;
    std::string discount_percent;
    std::string discount_amount;
    std::string surcharge;
    std::string minimum;
    std::string net;
    std::string total_due;  ///< Net charge and surcharge.
    std::vector<BreakCharge> minimum_charges;
    std::vector<BreakCharge> single_shipment_charges;
    std::vector<std::string> notes;  ///< What was said while the shipment was rated.
};

/// The bill that RateShipment has left in a record.
Bill ReadBill(const RateContext& context, std::vector<std::string> notes);

/// Refuses amounts that are none: the record holds them in part, or an engine gave no answer that
/// could be read; and weights that are not those of the lines.
Refusals CheckAmounts(const Bill& bill);

/// The charges of the lines and the deficit.
Cents SumOfLines(const Bill& bill);

/// Tells of a gross charge that is not the sum of its lines to the cent, since the library sums in
/// single precision, which tells from some ten thousand dollars on. Empty when it is.
std::string GrossNote(const Bill& bill);

/// The bill as text, lines ending in LF.
std::string BillText(const Bill& bill);

/// MM-DD-YYYY as YYYY-MM-DD.
std::string IsoDate(const std::string& date);

/// The bill as JSON, of the schema hundredweight/bill/1: written, or as a document.
void WriteJson(JsonWriter& json, const Bill& bill);
nlohmann::ordered_json BillJson(const Bill& bill);

/// The same as it is printed, and that a shipment with this bill is valid, of the schema
/// hundredweight/check/1.
std::string BillDocument(const Bill& bill);
std::string CheckDocument(const Bill& bill);

}  // namespace cwt
