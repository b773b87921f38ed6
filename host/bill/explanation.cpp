#include "bill/explanation.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "text/json_writer.h"
#include "text/wrapped.h"

namespace cwt {
namespace {

constexpr std::size_t kIndent = 16;
constexpr std::size_t kLineWidth = 88;

std::string Indented(std::string_view text) {
    return Wrapped(text, kLineWidth, kIndent);
}

std::string SourceText(const Source& source) {
    if (!source.shipment.empty()) return "shipment " + source.shipment;
    if (source.file.empty()) return source.field;
    std::string text = fmt::format("{} record {}", source.file, source.record);
    if (!source.field.empty()) text += " " + source.field;
    return text;
}

void WriteSource(JsonWriter& json, const Source& source) {
    json.Object([&] {
        if (!source.shipment.empty()) return json.Key("shipment").Text(source.shipment);
        if (source.file.empty()) return json.Key("field").Text(source.field);
        json.Key("file").Text(source.file);
        json.Key("record").Number(source.record);
        if (!source.field.empty()) json.Key("field").Text(source.field);
    });
}

void WriteStatement(JsonWriter& json, const Statement& statement) {
    json.Object([&] {
        json.Key("topic").Text(statement.topic);
        json.Key("words").Text(statement.words);
        json.Key("figures").Object([&] {
            for (const Figure& figure : statement.figures) {
                json.Key(figure.name);
                figure.is_whole ? json.Number(std::atoi(figure.text.c_str()))
                                : json.Text(figure.text);
            }
        });
        json.Key("adds_up");
        statement.adds_up ? json.Flag(*statement.adds_up) : json.Null();
        json.Key("sources").Array([&] {
            for (const Source& source : statement.sources) WriteSource(json, source);
        });
    });
}

}  // namespace

std::string ExplanationText(const Explanation& explanation) {
    std::string text = "WHY IT SAYS SO\n";
    for (const Statement& statement : explanation) {
        std::string topic = statement.topic;
        std::ranges::replace(topic, '_', ' ');
        text += fmt::format("\n  {:<{}}", topic, kIndent - 2) + Indented(statement.words);
        std::string sources;
        for (const Source& source : statement.sources) {
            sources += (sources.empty() ? "" : ", ") + SourceText(source);
        }
        if (!sources.empty()) text += std::string(kIndent, ' ') + Indented("[" + sources + "]");
    }
    return text;
}

void WriteJson(JsonWriter& json, const Bill& bill, const Explanation& explanation) {
    json.Object([&] {
        json.Key("schema").Text("hundredweight/explanation/1");
        WriteJson(json.Key("bill"), bill);
        json.Key("statements").Array([&] {
            for (const Statement& statement : explanation) WriteStatement(json, statement);
        });
    });
}

std::string ExplanationDocument(const Bill& bill, const Explanation& explanation) {
    return DocumentOf([&](JsonWriter& json) { WriteJson(json, bill, explanation); });
}

}  // namespace cwt
