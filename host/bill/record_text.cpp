#include "bill/record_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace cwt {
namespace {

struct Field {
    std::string_view name;
    std::size_t offset;
    std::size_t size;
    bool is_pointer;
};

constexpr Field kFields[] = {
#define RECORD_FIELD(name)                                                                 \
    {#name, offsetof(RateContext, name), sizeof(static_cast<RateContext*>(nullptr)->name), \
     std::is_pointer_v<decltype(RateContext::name)>},
#include "record_fields.inc"
};

/// A table, the number of its records and their size in bytes.
struct TableField {
    std::string_view name;
    std::size_t count;  ///< Offset of a 32-bit integer.
    std::size_t record_size;
};

constexpr TableField kTables[] = {{"Zp6Table", offsetof(RateContext, Zp6Count), 12},
                                  {"SccTable", offsetof(RateContext, SccCount), 8},
                                  {"DchTable", offsetof(RateContext, DchCount), 25},
                                  {"SzpTable", offsetof(RateContext, SzpCount), 5},
                                  {"WsmTable", offsetof(RateContext, WsmCount), 4},
                                  {"LevelTable", offsetof(RateContext, LevelCount), 18},
                                  {"EfcTable", offsetof(RateContext, EfcCount), 17},
                                  {"LaTable", offsetof(RateContext, LaCount), 8},
                                  {"RbaTable", offsetof(RateContext, RbaCount), 16},
                                  {"McTable", offsetof(RateContext, McCount), 12},
                                  {"McaTable", offsetof(RateContext, McaCount), 12},
                                  {"CozTable", offsetof(RateContext, CozCount), 6}};

std::string_view BytesAt(const void* start, std::size_t size) {
    return {static_cast<const char*>(start), size};
}

template <class Value>
Value ValueAt(const RateContext& context, std::size_t offset) {
    Value value;
    std::memcpy(&value, reinterpret_cast<const char*>(&context) + offset, sizeof value);
    return value;
}

/// What hangs on a field; empty where its size is not known here.
std::string_view TableBytes(const RateContext& context, const Field& field) {
    const auto* const start = ValueAt<const void*>(context, field.offset);
    for (const TableField& table : kTables) {
        if (table.name != field.name || start == nullptr) continue;
        const auto count = static_cast<std::size_t>(ValueAt<int32_t>(context, table.count));
        return BytesAt(start, count * table.record_size);
    }
    return {};
}

std::string FieldText(const RateContext& context, const Field& field) {
    std::string_view bytes =
        BytesAt(reinterpret_cast<const char*>(&context) + field.offset, field.size);
    const bool is_set = bytes.find_last_not_of('\0') != bytes.npos;
    const bool is_open = field.name.ends_with("Handle") && is_set && bytes != "\xFF\xFF\xFF\xFF";
    std::string text = is_open || (field.is_pointer && is_set) ? "there" : "";
    if (is_open) return text;
    if (field.is_pointer) bytes = TableBytes(context, field);
    bytes = bytes.substr(0, bytes.find_last_not_of('\0') + 1);
    if (!text.empty() && !bytes.empty()) text += ' ';
    for (const char byte : bytes) text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return text;
}

}  // namespace

std::string RecordText(const RateContext& context) {
    std::string text;
    for (const Field& field : kFields) {
        if (field.name == "UserDir" || field.name == "DataDir") continue;
        const std::string content = FieldText(context, field);
        if (!content.empty()) text += fmt::format("{} {}\n", field.name, content);
    }
    return text;
}

}  // namespace cwt
