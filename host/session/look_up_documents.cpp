#include "session/look_up_documents.h"

#include "text/json_writer.h"

namespace cwt {
namespace {

void WriteTexts(JsonWriter& json, const std::vector<std::string>& texts) {
    json.Array([&] {
        for (const std::string& text : texts) json.Text(text);
    });
}

/// An object of a schema, with the members that `write` writes.
template <class Write>
std::string ObjectOf(const char* schema, Write write) {
    return DocumentOf([&](JsonWriter& json) {
        json.Object([&] {
            json.Key("schema").Text(schema);
            write(json);
        });
    });
}

}  // namespace

std::string StatesDocument(const std::vector<PlacedCode>& placed, const Refusals& refusals) {
    return ObjectOf("hundredweight/states/1", [&](JsonWriter& json) {
        json.Key("states").Array([&] {
            for (const PlacedCode& code : placed) {
                json.Object([&] {
                    json.Key("postal_code").Text(code.postal_code);
                    json.Key("state").Text(code.state);
                });
            }
        });
        WriteJson(json.Key("refusals"), refusals);
    });
}

std::string CitiesDocument(const std::string& postal_code, const std::vector<std::string>& cities) {
    return ObjectOf("hundredweight/cities/1", [&](JsonWriter& json) {
        json.Key("postal_code").Text(postal_code);
        WriteTexts(json.Key("cities"), cities);
    });
}

std::string ClassesDocument(const TablesAnswer& tables) {
    return ObjectOf("hundredweight/classes/1", [&](JsonWriter& json) {
        json.Key("tariff").TextOrNull(tables.tariff);
        WriteTexts(json.Key("classes"), tables.classes);
        json.Key("weight_breaks").Array([&] {
            for (const WeightBreak& weight_break : tables.breaks) {
                json.Object([&] {
                    json.Key("label").Text(weight_break.label);
                    json.Key("weight").Number(weight_break.weight);
                });
            }
        });
    });
}

std::string ProfilesDocument(const std::vector<std::string>& names) {
    return ObjectOf("hundredweight/profiles/1",
                    [&](JsonWriter& json) { WriteTexts(json.Key("profiles"), names); });
}

}  // namespace cwt
