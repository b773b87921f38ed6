#include <fmt/core.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "tariffs/carried_text.h"
#include "tariffs/families/family.h"
#include "tariffs/field_guide.h"
#include "tariffs/settings_document.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

Json HexOfWidth(std::size_t width) {
    return {{"type", "string"},
            {"pattern", fmt::format("^hex:([0-9a-fA-F]{{2}}){{0,{}}}$", width)}};
}

Json WholeNumber(const Field& field) {
    constexpr std::int64_t kOne = 1;
    const int bits = static_cast<int>(8 * field.width);
    if (field.kind == Kind::kUnsigned) {
        return {{"type", "integer"}, {"minimum", 0}, {"maximum", (kOne << bits) - 1}};
    }
    return {{"type", "integer"},
            {"minimum", -(kOne << (bits - 1))},
            {"maximum", (kOne << (bits - 1)) - 1}};
}

/// What a value is, but for bytes in hexadecimal.
Json FormOf(const Field& field) {
    switch (field.kind) {
        case Kind::kText:
        case Kind::kPostal:
        case Kind::kCode:
        case Kind::kRight:
            return {{"type", "string"}, {"maxLength", field.width}};
        case Kind::kFlag:
            return {{"type", Json::array({"boolean", "string"})}, {"maxLength", 1}};
        case Kind::kInt:
        case Kind::kUnsigned:
            return WholeNumber(field);
        case Kind::kFloat:
        case Kind::kDollars:
        case Kind::kCents:
            // A text keeps digits that JSON's number would write in another way.
            return {{"type", Json::array({"number", "string"})}, {"pattern", "^-?[0-9.]+$"}};
        case Kind::kDate:
            return {{"type", "string"}, {"pattern", "^[0-9]{4}-[0-9]{2}-[0-9]{2}$"}};
    }
    return {};
}

Json SectionOf(const Family& family) {
    Json needed = Json::array(), keys = Json::object();
    for (const Column& column : ColumnsOf(family.fields)) {
        if (column.field->is_needed) needed.push_back(column.name);
        keys[column.name] = {
            {"description", column.field->meaning},
            {"anyOf", Json::array({FormOf(*column.field), HexOfWidth(column.field->width)})}};
    }
    Json section = {{"description", fmt::format("{}: SET.{}", family.words, family.extension)},
                    {"type", "object"}};
    if (!needed.empty()) section["required"] = std::move(needed);
    section["additionalProperties"] = false;
    section["properties"] = std::move(keys);
    return section;
}

}  // namespace

std::string SettingsSchema() {
    Json properties = {
        {"schema", {{"const", kSettingsSchema}}},
        {"set",
         {{"description", "Base name of the set's files."},
          {"type", "string"},
          {"pattern", "^[A-Za-z0-9_-]{1,8}$"}}},
    };
    for (const Family& family : Families()) {
        if (family.shape == Shape::kSettings) properties[family.text] = SectionOf(family);
    }
    return DocumentOf(
        Json{{"$schema", "https://json-schema.org/draft/2020-12/schema"},
             {"$id", "urn:hundredweight:tariff-set:1"},
             {"title", "settings.json of a tariff set as text"},
             {"description",
              "A value that is left out is blank, or 0. Any may be its bytes in hexadecimal."},
             {"type", "object"},
             {"required", Json::array({"schema", "set"})},
             {"additionalProperties", false},
             {"properties", std::move(properties)}});
}

}  // namespace cwt
