#include "language.h"

#include <fmt/core.h>

#include <stdexcept>

namespace languages {

const Json* FindRecord(const Json& description, const std::string& name) {
    for (const Json& record : description["records"]) {
        if (record["name"] == name) return &record;
    }
    return nullptr;
}

std::string NameOf(const std::string& type, const TypeNames& names) {
    const auto found = names.find(type);
    if (found == names.end()) throw std::runtime_error("no name is known for " + type);
    return found->second;
}

Json OverlaysOf(const Json& record, const Json& field) {
    Json overlays = Json::array();
    for (const Json& each : record["fields"]) {
        if (each.contains("overlays") && each["overlays"] == field["name"])
            overlays.push_back(each);
    }
    return overlays;
}

std::string ByWidth(const Json& bytes, const std::string& wider) {
    const int narrow = bytes["32"];
    const int pointers = (bytes["64"].get<int>() - narrow) / 4;
    return pointers == 0 ? std::to_string(narrow)
                         : fmt::format("{} + {} * {}", narrow, pointers, wider);
}

std::string FileNotice(const Json& description) {
    return fmt::format(
        "Hundredweight {}: written by the build from the public headers, which say more.",
        description["version"].get<std::string>());
}

}  // namespace languages
