#include "bill/explanation.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string_view>

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kIndent = 16;
constexpr std::size_t kLineWidth = 88;

/// A text in lines of a limited width, all but the first indented.
std::string Wrapped(std::string_view text) {
    std::string lines;
    std::size_t width = kIndent;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (width + word.size() > kLineWidth && width > kIndent) {
            lines.back() = '\n';
            lines.append(kIndent, ' ');
            width = kIndent;
        }
        lines.append(word).append(1, ' ');
        width += word.size() + 1;
    }
    if (!lines.empty()) lines.back() = '\n';
    return lines;
}

std::string SourceText(const Source& source) {
    if (!source.shipment.empty()) return "shipment " + source.shipment;
    if (source.file.empty()) return source.field;
    std::string text = fmt::format("{} record {}", source.file, source.record);
    if (!source.field.empty()) text += " " + source.field;
    return text;
}

Json SourceJson(const Source& source) {
    if (!source.shipment.empty()) return {{"shipment", source.shipment}};
    if (source.file.empty()) return {{"field", source.field}};
    Json json = {{"file", source.file}, {"record", source.record}};
    if (!source.field.empty()) json["field"] = source.field;
    return json;
}

Json StatementJson(const Statement& statement) {
    Json figures = Json::object();
    for (const Figure& figure : statement.figures) {
        figures[figure.name] =
            figure.is_whole ? Json(std::atoi(figure.text.c_str())) : Json(figure.text);
    }
    Json sources = Json::array();
    for (const Source& source : statement.sources) sources.push_back(SourceJson(source));
    return {{"topic", statement.topic},
            {"words", statement.words},
            {"figures", std::move(figures)},
            {"adds_up", statement.adds_up ? Json(*statement.adds_up) : Json(nullptr)},
            {"sources", std::move(sources)}};
}

}  // namespace

std::string ExplanationText(const Explanation& explanation) {
    std::string text = "WHY IT SAYS SO\n";
    for (const Statement& statement : explanation) {
        std::string topic = statement.topic;
        std::ranges::replace(topic, '_', ' ');
        text += fmt::format("\n  {:<{}}", topic, kIndent - 2) + Wrapped(statement.words);
        std::string sources;
        for (const Source& source : statement.sources) {
            sources += (sources.empty() ? "" : ", ") + SourceText(source);
        }
        if (!sources.empty()) text += std::string(kIndent, ' ') + Wrapped("[" + sources + "]");
    }
    return text;
}

Json ExplanationJson(const Bill& bill, const Explanation& explanation) {
    Json statements = Json::array();
    for (const Statement& statement : explanation) statements.push_back(StatementJson(statement));
    return {{"schema", "hundredweight/explanation/1"},
            {"bill", BillJson(bill)},
            {"statements", std::move(statements)}};
}

}  // namespace cwt
