#include "session/set_words.h"

#include <fmt/core.h>

#include <nlohmann/json.hpp>
#include <string_view>

#include "tariffs/families/family.h"
#include "tariffs/field_json.h"
#include "text/field_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

std::string_view BytesAt(const void* at, std::size_t size) {
    return {static_cast<const char*>(at), at == nullptr ? 0 : size};
}

/// The fields of a record, each with its value and what that means.
Json FieldsOf(const Family& family, std::string_view record) {
    Json fields = ShownRecord(family.fields, record);
    for (const Field& field : family.fields) {
        if (!fields.contains(field.name)) continue;
        fields[field.name] = {{"value", fields[field.name]}, {"meaning", field.meaning}};
    }
    return fields;
}

/// Adds the first records of a table.
void AddRows(const char* extension, const void* table, int32_t count, Json& rows) {
    const Family& family = *FamilyOf(extension);
    std::string_view bytes = BytesAt(table, static_cast<std::size_t>(count) * family.record_size);
    for (; !bytes.empty(); bytes.remove_prefix(family.record_size)) {
        rows.push_back(ShownRecord(family.fields, bytes));
    }
}

}  // namespace

Json Sections(const RateContext& c) {
    const struct {
        const char* extension;
        const void* record;
    } records[] = {{"SET", c.SetRecord},
                   {"DEF", c.DefRecord},
                   {"BSV", c.BsvRecord},
                   {"ZPS", c.ZpsRecord},
                   {"DIS", c.DiscRecord}};
    Json sections = Json::object();
    for (const auto& [extension, record] : records) {
        const Family& family = *FamilyOf(extension);
        const std::string_view bytes = BytesAt(record, family.record_size);
        // A record that no file was read into is zero.
        if (bytes.find_first_not_of('\0') == bytes.npos) continue;
        sections[family.text] = FieldsOf(family, bytes);
    }
    return sections;
}

Json Labels(const RateContext& c) {
    return {TextOf(c.TariffLabel1), TextOf(c.TariffLabel2), TextOf(c.TariffLabel3),
            TextOf(c.TariffLabel4)};
}

Json TableNames(const RateContext& c) {
    Json names = Json::array();
    for (const auto& name : c.TableNames) {
        if (name[0] != '\0') names.push_back(TextOf(name));
    }
    return names;
}

Json WeightBreaks(const RateContext& c) {
    Json breaks = Json::array();
    for (int32_t i = 0; i < c.WeightBreakCount; ++i) {
        breaks.push_back({{"label", TextOf(c.WeightBreakName[i])},
                          {"lowest_pounds", +c.WeightBreakMin[i]},
                          {"highest_pounds", +c.WeightBreakMax[i]}});
    }
    return breaks;
}

Json Accessorials(const RateContext& c) {
    Json items = Json::array();
    AddRows("ACC", c.AccRecords, c.AccCount, items);
    return items;
}

Json States(const RateContext& c) {
    Json states = Json::array();
    const Inner& prefixes = FamilyOf("SC")->inner.front();
    const Field& field = prefixes.fields.front();
    const bool is_loaded = c.ScTable[0][0] != 0;
    for (std::size_t i = 0; is_loaded && i < prefixes.count; ++i) {
        const Json state = ShownValue(field, BytesAt(c.ScTable[i] + field.offset, field.width));
        const std::string prefix = fmt::format("{:03}", i + 1);
        if (states.empty() || states.back()["state"] != state) {
            states.push_back({{"state", state}, {"first", prefix}});
        }
        states.back()["last"] = prefix;
    }
    AddRows("SCC", c.SccTable, c.SccCount, states);
    return states;
}

}  // namespace cwt
