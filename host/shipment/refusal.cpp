#include "shipment/refusal.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <nlohmann/json.hpp>

#include "text/code_page.h"
#include "text/json_writer.h"

namespace cwt {

void WriteJson(JsonWriter& json, const Refusals& refusals) {
    json.Array([&] {
        for (const Refusal& refusal : refusals) {
            json.Object([&] {
                json.Key("place").Text(refusal.place);
                json.Key("code");
                refusal.code > 0 ? json.Number(refusal.code) : json.Null();
                json.Key("text").Text(refusal.text);
                json.Key("written").Text(refusal.written);
                json.Key("alternatives").Array([&] {
                    for (const std::string& alternative : refusal.alternatives) {
                        json.Text(alternative);
                    }
                });
            });
        }
    });
}

nlohmann::ordered_json RefusalsJson(const Refusals& refusals, const std::string& id) {
    std::string text;
    JsonWriter json(text, JsonWriter::kCompact);
    json.Object([&] {
        json.Key("schema").Text("hundredweight/refusals/1");
        json.Key("id").TextOrNull(id);
        WriteJson(json.Key("refusals"), refusals);
    });
    return nlohmann::ordered_json::parse(text);
}

std::string RefusalText(const Refusal& refusal) {
    std::string text = refusal.place;
    if (!refusal.written.empty()) {
        text += fmt::format("{}\"{}\"", text.empty() ? "" : " ", Printable(refusal.written));
    }
    text += (text.empty() ? "" : ": ") + refusal.text;
    if (refusal.code > 0) text += fmt::format(" (code {})", refusal.code);
    if (!refusal.alternatives.empty()) {
        text += fmt::format("; possible: {}", fmt::join(refusal.alternatives, ", "));
    }
    return text;
}

std::string ReasonOf(const Refusals& refusals) {
    std::string reason;
    for (const Refusal& refusal : refusals) {
        reason += (reason.empty() ? "" : "; ") + RefusalText(refusal);
    }
    return reason;
}

}  // namespace cwt
