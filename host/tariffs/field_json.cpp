#include "tariffs/field_json.h"

#include <nlohmann/json.hpp>

#include "tariffs/carried_text.h"
#include "text/field_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

bool IsNumber(Kind kind) {
    return kind == Kind::kInt || kind == Kind::kUnsigned || kind == Kind::kFloat;
}

}  // namespace

Json ValueOf(const Field& field, std::string_view bytes) {
    const std::string text = FieldText(field, bytes);
    if (field.kind == Kind::kFlag && (text == "yes" || text == "no")) return text == "yes";
    if (IsNumber(field.kind) && !text.starts_with(kHex)) {
        // A number that JSON would write in another way stays a text.
        Json number = Json::parse(text);
        if (number.dump() == text) return number;
    }
    return text;
}

Json ShownValue(const Field& field, std::string_view bytes) {
    Json value = ValueOf(field, bytes);
    const bool is_text = IsText(field.kind) || field.kind == Kind::kFlag;
    if (IsHosts(field) || !is_text || !value.is_string()) return value;
    return TextOf(bytes.data(), bytes.size());
}

Json ShownRecord(std::span<const Field> fields, std::string_view record) {
    Json shown = Json::object();
    for (const Field& field : fields) {
        Json values = Json::array();
        for (std::size_t i = 0; i < field.count; ++i) {
            const auto bytes = record.substr(field.offset + i * field.width, field.width);
            if (!IsHosts(field) || !IsLeftOut(field, bytes)) {
                values.push_back(ShownValue(field, bytes));
            }
        }
        if (!values.empty()) shown[field.name] = field.count == 1 ? values[0] : values;
    }
    return shown;
}

}  // namespace cwt
