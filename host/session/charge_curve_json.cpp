#include "session/charge_curve.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

void WriteAmount(JsonWriter& json, const char* name, Cents cents) {
    json.Key(name).Text(AmountOf(cents));
}

void WritePoint(JsonWriter& json, const CurvePoint& point) {
    const bool is_rated = point.refusal.empty();
    const auto amount = [&](const char* name, Cents cents) {
        is_rated ? WriteAmount(json, name, cents) : json.Key(name).Null();
    };
    json.Object([&] {
        json.Key("weight").Number(point.weight);
        json.Key("billed_weight");
        is_rated ? json.Number(point.billed_weight) : json.Null();
        amount("gross_charge", point.gross);
        amount("net_charge", point.net);
        amount("total_due", point.due);
        json.Key("is_minimum").Flag(point.is_minimum);
        json.Key("deficit").Number(point.deficit);
        json.Key("refusal").TextOrNull(point.refusal);
    });
}

void WriteBreaks(JsonWriter& json, const std::vector<WeightBreak>& breaks) {
    json.Array([&] {
        for (const WeightBreak& weight_break : breaks) {
            json.Object([&] {
                json.Key("label").Text(weight_break.label);
                json.Key("weight").Number(weight_break.weight);
            });
        }
    });
}

void WritePlateaus(JsonWriter& json, const std::vector<Plateau>& plateaus) {
    json.Array([&] {
        for (const Plateau& plateau : plateaus) {
            json.Object([&] {
                json.Key("from").Number(plateau.from);
                json.Key("to").Number(plateau.to);
                WriteAmount(json, "net_charge", plateau.net);
                json.Key("billed_weight").Number(plateau.billed_weight);
            });
        }
    });
}

/// A point by its weight, under the name that says what the weight is.
void WriteMark(JsonWriter& json, const char* name, const std::optional<CurvePoint>& point) {
    if (!point) return json.Null();
    json.Object([&] {
        json.Key(name).Number(point->weight);
        WriteAmount(json, "net_charge", point->net);
    });
}

}  // namespace

std::string CurveDocument(const ChargeCurve& curve) {
    return DocumentOf([&](JsonWriter& json) {
        json.Object([&] {
            json.Key("schema").Text("hundredweight/curve/1");
            json.Key("id").TextOrNull(curve.id);
            json.Key("currency").Text("USD");
            json.Key("from").Number(curve.range.from);
            json.Key("to").Number(curve.range.to);
            json.Key("complete").Flag(curve.is_complete);
            json.Key("points").Array([&] {
                for (const CurvePoint& point : curve.points) WritePoint(json, point);
            });
            WriteBreaks(json.Key("breaks"), curve.breaks);
            WritePlateaus(json.Key("plateaus"), curve.plateaus);
            WriteMark(json.Key("minimum"), "to", curve.minimum);
            json.Key("shipment").Object([&] {
                json.Key("weight").Number(curve.shipment.weight);
                WriteAmount(json, "net_charge", curve.shipment.net);
                json.Key("billed_weight").Number(curve.shipment.billed_weight);
            });
            WriteMark(json.Key("cheaper"), "weight", curve.cheaper);
        });
    });
}

}  // namespace cwt
