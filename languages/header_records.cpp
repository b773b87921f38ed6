// Reads the records and functions that the public headers declare.
#include <regex>
#include <stdexcept>
#include <utility>

#include "description.h"
#include "header_text.h"

namespace languages {
namespace {

using Kind = HeaderPart::Kind;

/// Each header after those whose records it uses.
constexpr const char* kHeaders[] = {"engine_interface.h", "service_guide_interface.h",
                                    "profile_record.h",   "host_records.h",
                                    "rate_context.h",     "exports.h",
                                    "platform.h"};

/// Where the reading of a header has come to.
struct Place {
    std::string header;
    std::string before;   ///< The comment on what follows.
    std::string section;  ///< The comment on the fields up to the next gap.
    bool in_record = false;
    std::string overlaid;  ///< The field whose bytes the fields being read name.
};

std::string Taken(std::string& text) {
    return std::exchange(text, "");
}

Json ReadDimensions(const std::string& brackets) {
    static const std::regex kDimension(R"(\[([0-9]+)\])");
    Json dimensions = Json::array();
    for (std::sregex_iterator each(brackets.begin(), brackets.end(), kDimension), end; each != end;
         ++each) {
        dimensions.push_back(std::stoi((*each)[1]));
    }
    return dimensions;
}

void AddFields(const std::string& code, Place& place, Json& record) {
    static const std::regex kMember(R"(([A-Za-z0-9_ ]+?[ *]+)([A-Za-z0-9_]+)((?:\[[0-9]+\])*);)");
    std::smatch member;
    if (!std::regex_match(code, member, kMember)) throw std::runtime_error("no member: " + code);
    std::string type = member[1];
    type.erase(type.find_last_not_of(' ') + 1);
    Json field;
    field["name"] = member[2];
    field["type"] = type;
    field["dimensions"] = ReadDimensions(member[3]);
    if (!place.overlaid.empty()) field["overlays"] = place.overlaid;
    field["meaning"] = Taken(place.before);
    if (!place.section.empty()) field["section"] = place.section;
    record["fields"].push_back(field);
}

/// Takes a declaration within a record. False: it ends the record.
bool AddToRecord(const std::string& code, Place& place, Json& record) {
    if (code == "union {") return true;
    if (code == "HWT_OVERLAY struct {") {
        place.overlaid = record["fields"].back()["name"];
    } else if (code == "};") {
        place.overlaid.clear();
    } else if (code.starts_with('}')) {
        return false;
    } else {
        AddFields(code, place, record);
    }
    return true;
}

Json ReadArguments(const std::string& list) {
    static const std::regex kArgument(R"(([A-Za-z0-9_ ]+?[ *]+)([a-z_]+)(?:,|$))");
    Json arguments = Json::array();
    for (std::sregex_iterator each(list.begin(), list.end(), kArgument), end; each != end; ++each) {
        std::string type = InOneLine((*each)[1].str());
        arguments.push_back({{"name", (*each)[2]}, {"type", type}});
    }
    return arguments;
}

void AddFunction(const std::string& code, Place& place, Json& functions) {
    static const std::regex kFunction(
        R"(HWT_API ([A-Za-z0-9_ *]+?) (HWT_CALL )?([A-Za-z0-9]+)\((.*)\);)");
    std::smatch function;
    if (!std::regex_match(code, function, kFunction)) {
        throw std::runtime_error("no function: " + code);
    }
    const bool library = place.header == "exports.h";
    functions.push_back({{"name", function[3]},
                         {"library", library ? "hundredweight" : "hundredweight-platform"},
                         {"result", function[1]},
                         {"arguments", ReadArguments(function[4])},
                         {"meaning", Taken(place.before)}});
}

void AddHandler(const std::smatch& handler, Place& place, Json& handlers) {
    handlers.push_back({{"name", handler[2]},
                        {"result", handler[1]},
                        {"arguments", ReadArguments(handler[3])},
                        {"meaning", Taken(place.before)}});
}

void AddDeclaration(const std::string& code, Place& place, Json& description) {
    static const std::regex kRecord(R"(typedef struct ([A-Za-z0-9_]+) \{)");
    static const std::regex kHandler(R"(typedef ([A-Za-z0-9_]+) \(\*([A-Za-z]+)\)\((.*)\);)");
    std::smatch record, handler;
    Json& records = description["records"];
    if (place.in_record) {
        place.in_record = AddToRecord(code, place, records.back());
    } else if (std::regex_match(code, record, kRecord)) {
        place.in_record = true;
        records.push_back({{"name", record[1]},
                           {"header", "hundredweight/" + place.header},
                           {"meaning", Taken(place.before)},
                           {"size", nullptr},
                           {"fields", Json::array()}});
    } else if (code.starts_with("HWT_API")) {
        AddFunction(code, place, description["functions"]);
    } else if (std::regex_match(code, handler, kHandler)) {
        AddHandler(handler, place, description["handlers"]);
    } else if (code.starts_with("typedef struct")) {
        throw std::runtime_error("no record: " + code);
    } else {
        place.before.clear();
    }
}

void AddHeader(const std::filesystem::path& path, Json& description) {
    Place place;
    place.header = path.filename().string();
    for (const HeaderPart& part : ReadHeader(path)) {
        switch (part.kind) {
            case Kind::kBefore:
                place.before = part.text;
                break;
            case Kind::kSection:
                place.section = part.text;
                break;
            case Kind::kGap:
                place.section.clear();
                break;
            case Kind::kBehind:
                description["records"].back()["fields"].back()["meaning"] = part.text;
                break;
            case Kind::kCode:
                AddDeclaration(part.text, place, description);
        }
    }
}

}  // namespace

Json DescribeHeaders(const std::filesystem::path& headers) {
    Json description = {{"schema", "hundredweight/record/1"},
                        {"version", nullptr},
                        {"records", Json::array()},
                        {"handlers", Json::array()},
                        {"functions", Json::array()}};
    for (const char* header : kHeaders) AddHeader(headers / header, description);
    return description;
}

}  // namespace languages
