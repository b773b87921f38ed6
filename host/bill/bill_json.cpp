#include <nlohmann/json.hpp>

#include "bill/bill.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

void WriteCharges(JsonWriter& json, const std::vector<BreakCharge>& charges) {
    json.Array([&] {
        for (const BreakCharge& charge : charges) {
            json.Object([&] {
                json.Key("label").Text(charge.label);
                json.Key("weight").Number(charge.weight);
                json.Key("amount").Number(charge.amount);
                json.Key("raised_to_floor").Flag(charge.raised_to_floor);
            });
        }
    });
}

void WritePoint(JsonWriter& json, const BillPoint& point) {
    json.Object([&] {
        json.Key("zip").Text(point.zip);
        json.Key("city").TextOrNull(point.city);
        json.Key("state").TextOrNull(point.state);
        json.Key("terminal").TextOrNull(point.terminal);
        json.Key("service").TextOrNull(point.service);
    });
}

void WriteDays(JsonWriter& json, std::optional<int> days) {
    days ? json.Number(*days) : json.Null();
}

void WriteTransit(JsonWriter& json, const std::optional<TransitDays>& days) {
    if (!days) return json.Null();
    json.Object([&] {
        WriteDays(json.Key("standard"), days->standard);
        WriteDays(json.Key("guaranteed"), days->guaranteed);
        WriteDays(json.Key("border"), days->border);
    });
}

void WriteLines(JsonWriter& json, const std::vector<BillLine>& lines) {
    json.Array([&] {
        for (const BillLine& line : lines) {
            json.Object([&] {
                json.Key("class").Text(line.class_code);
                json.Key("rated_as").Text(line.rated_as);
                json.Key("weight").Number(line.weight);
                json.Key("rate").Text(line.rate);
                json.Key("charge").Text(line.charge);
            });
        }
    });
}

void WriteDeficit(JsonWriter& json, const BillLine& deficit) {
    if (deficit.weight == 0) return json.Null();
    json.Object([&] {
        json.Key("weight").Number(deficit.weight);
        json.Key("rate").Text(deficit.rate);
        json.Key("charge").Text(deficit.charge);
    });
}

/// From where the goods go under which tariff, down to what each line comes to.
void WriteRating(JsonWriter& json, const Bill& bill) {
    json.Key("schema").Text("hundredweight/bill/1");
    json.Key("id").TextOrNull(bill.id);
    json.Key("description").Text(bill.description);
    json.Key("currency").Text("USD");
    json.Key("tariff").Object([&] {
        json.Key("name").Text(bill.tariff);
        json.Key("date").Text(IsoDate(bill.date));
        json.Key("rate_code").Text(bill.rate_code);
    });
    WritePoint(json.Key("origin"), bill.origin);
    WritePoint(json.Key("destination"), bill.destination);
    WriteTransit(json.Key("transit_days"), bill.transit_days);
    WriteLines(json.Key("lines"), bill.lines);
    WriteDeficit(json.Key("deficit"), bill.deficit);
}

void WriteTotals(JsonWriter& json, const Bill& bill) {
    json.Key("total_weight").Number(bill.total_weight);
    json.Key("billed_weight").Number(bill.billed_weight);
    json.Key("gross_charge").Text(bill.gross);
    json.Key("discount").Object([&] {
        json.Key("percent").Text(bill.discount_percent);
        json.Key("amount").Text(bill.discount_amount);
    });
    json.Key("net_charge").Text(bill.net);
    json.Key("minimum_charge").Text(bill.minimum);
    json.Key("surcharge").Text(bill.surcharge);
    json.Key("total_due").Text(bill.total_due);
    json.Key("charges_by_break").Object([&] {
        WriteCharges(json.Key("minimum"), bill.minimum_charges);
        WriteCharges(json.Key("single_shipment"), bill.single_shipment_charges);
    });
    json.Key("notes").Array([&] {
        for (const std::string& note : bill.notes) json.Text(note);
    });
}

}  // namespace

std::string IsoDate(const std::string& date) {
    return date.substr(6) + "-" + date.substr(0, 5);
}

void WriteJson(JsonWriter& json, const Bill& bill) {
    json.Object([&] {
        WriteRating(json, bill);
        WriteTotals(json, bill);
    });
}

nlohmann::ordered_json BillJson(const Bill& bill) {
    std::string text;
    JsonWriter json(text, JsonWriter::kCompact);
    WriteJson(json, bill);
    return nlohmann::ordered_json::parse(text);
}

std::string BillDocument(const Bill& bill) {
    return DocumentOf([&](JsonWriter& json) { WriteJson(json, bill); });
}

std::string CheckDocument(const Bill& bill) {
    return DocumentOf([&](JsonWriter& json) {
        json.Object([&] {
            json.Key("schema").Text("hundredweight/check/1");
            json.Key("id").TextOrNull(bill.id);
            json.Key("valid").Flag(true);
            json.Key("notes").Array([&] {
                for (const std::string& note : bill.notes) json.Text(note);
            });
        });
    });
}

}  // namespace cwt
