// Where the fields of the packed records lie.
#include <map>
#include <stdexcept>
#include <string>

#include "description.h"

namespace languages {
namespace {

/// Bytes on machines with pointers of 32 and of 64 bits.
struct Bytes {
    int narrow;
    int wide;
};

Json AsJson(Bytes bytes) {
    return {{"32", bytes.narrow}, {"64", bytes.wide}};
}

const std::map<std::string, Bytes> kNumbers = {
    {"char", {1, 1}},    {"unsigned char", {1, 1}}, {"uint8_t", {1, 1}},
    {"int16_t", {2, 2}}, {"int32_t", {4, 4}},       {"float", {4, 4}},
};

Bytes WidthOf(const std::string& type, const std::map<std::string, Bytes>& records) {
    if (type.ends_with('*')) return {4, 8};
    for (const auto* known : {&kNumbers, &records}) {
        if (const auto found = known->find(type); found != known->end()) return found->second;
    }
    throw std::runtime_error("no width is known for " + type);
}

Bytes LayOutRecord(Json& record, const std::map<std::string, Bytes>& records) {
    Bytes end{0, 0}, overlay{0, 0};
    for (Json& field : record["fields"]) {
        int count = 1;
        for (const Json& dimension : field["dimensions"]) count *= dimension.get<int>();
        const Bytes width = WidthOf(field["type"], records);
        const bool names_bytes = field.contains("overlays");
        // Fields that name another's bytes follow it, and begin where it does.
        Bytes& place = names_bytes ? overlay : end;
        if (!names_bytes) overlay = end;
        field["width"] = AsJson(width);
        field["count"] = count;
        field["offset"] = AsJson(place);
        place = {place.narrow + count * width.narrow, place.wide + count * width.wide};
    }
    record["size"] = AsJson(end);
    return end;
}

}  // namespace

void LayOut(Json& records) {
    std::map<std::string, Bytes> known;
    for (Json& record : records) known[record["name"]] = LayOutRecord(record, known);
}

}  // namespace languages
