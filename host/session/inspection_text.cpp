#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>

#include "session/inspection.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

/// What there is of a file.
std::string ExtentText(const Json& file) {
    if (!file["present"].get<bool>()) return file["need"] == "required" ? "MISSING" : "-";
    if (!file.contains("bytes")) return "no regular file";
    std::string text = fmt::format("{:>8} bytes", file["bytes"].get<std::uintmax_t>());
    if (!file.contains("records")) return text;
    text += fmt::format("{:>6} records", file["records"].get<std::uintmax_t>());
    const auto stray = file["stray_bytes"].get<std::uintmax_t>();
    return stray > 0 ? text + fmt::format(", {} stray bytes", stray) : text;
}

std::string FileText(const Json& file) {
    return fmt::format("  {:<5}{:<10}{:<30} {} ({})\n", file["extension"].get<std::string>(),
                       file["need"].get<std::string>(), ExtentText(file),
                       file["meaning"].get<std::string>(), file["sheet"].get<std::string>());
}

/// A value as a reader wants it: texts without quotes, yes and no, nothing as a dash.
std::string ValueText(const Json& value) {
    if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
    if (!value.is_string()) return value.dump();
    const auto text = value.get<std::string>();
    return text.empty() ? "-" : text;
}

/// The first sentence of a field's meaning, without its point.
std::string ShortMeaning(const Json& field) {
    const auto meaning = field["meaning"].get<std::string>();
    return meaning.substr(0, std::min(meaning.find(". "), meaning.rfind('.')));
}

/// A section under its name: a line a field.
std::string SectionText(std::string name, const Json& fields) {
    std::ranges::replace(name, '_', ' ');
    name[0] = static_cast<char>(std::toupper(name[0]));
    std::string text = fmt::format("\n{}\n", name);
    for (const auto& [key, field] : fields.items()) {
        text +=
            fmt::format("  {:<23}{:<12} {}\n", key, ValueText(field["value"]), ShortMeaning(field));
    }
    return text;
}

constexpr const char* kNoEntries = "none";

/// A heading, and what stands in the place of entries where there are none.
std::string HeadingText(const char* title, const Json& list, const char* none) {
    return fmt::format("\n{}\n", title) + (list.empty() ? fmt::format("  {}\n", none) : "");
}

std::string ListText(const char* title, const Json& list, const char* none) {
    std::string text = HeadingText(title, list, none);
    if (list.empty()) return text;
    text += ' ';
    for (const Json& value : list) text += ' ' + ValueText(value);
    return text + '\n';
}

std::string WeightBreaksText(const Json& breaks, const char* none) {
    std::string text = HeadingText("Weight breaks (pounds)", breaks, none);
    for (const Json& entry : breaks) {
        text += fmt::format("  {:<8}{:>8} - {}\n", ValueText(entry["label"]),
                            ValueText(entry["lowest_pounds"]), ValueText(entry["highest_pounds"]));
    }
    return text;
}

std::string AccessorialsText(const Json& items) {
    std::string text = HeadingText("Accessorial items", items, kNoEntries);
    for (const Json& item : items) {
        text += fmt::format("  {:<6}{}\n", item.value("item_code", "-"),
                            item.value("description", "-"));
    }
    return text;
}

/// One line a state, with all its ranges.
std::string StatesText(const Json& ranges) {
    Json by_state = Json::object();
    for (const Json& range : ranges) {
        const std::string first = ValueText(range["first"]);
        const std::string last = ValueText(range["last"]);
        by_state[ValueText(range["state"])].push_back(
            first == last ? first : fmt::format("{}-{}", first, last));
    }
    std::string text = HeadingText("States by postal-code prefix", ranges, kNoEntries);
    for (const auto& [state, list] : by_state.items()) {
        text += fmt::format("  {} ", state);
        for (const Json& range : list) text += ' ' + ValueText(range);
        text += '\n';
    }
    return text;
}

}  // namespace

std::string InspectionText(const Json& inspection, bool with_states) {
    const bool loads = inspection["loads"].get<bool>();
    const bool by_engine = inspection["rating"] == "engine";
    std::string text =
        fmt::format("Set {} in {}, for rating by {}\n", ValueText(inspection["set"]),
                    ValueText(inspection["directory"]), by_engine ? "an engine" : "its own tables");
    text += loads ? "The set loads.\n" : "THE SET DOES NOT LOAD.\n";
    if (const Json& failure = inspection["failure"]; !failure.is_null()) {
        text += "Broken: " + FailureText(failure) + "\n";
    }
    for (const Json& partner : inspection["partners"]) {
        text += fmt::format("The {} {} {}.\n", ValueText(partner["role"]),
                            ValueText(partner["library"]),
                            partner["works"] == true ? "works" : "DOES NOT WORK");
    }
    text += fmt::format("Level date: {}\n", inspection["level_date"].is_null()
                                                ? "no level file"
                                                : ValueText(inspection["level_date"]));
    text += "\nFiles\n";
    for (const Json& file : inspection["files"]) text += FileText(file);
    for (const auto& [name, fields] : inspection["sections"].items()) {
        text += SectionText(name, fields);
    }
    text += ListText("Labels that hosts print", inspection["labels"], kNoEntries);
    text += ListText("Table names", inspection["table_names"], kNoEntries);
    const char* const none = by_engine ? "none in the set; the engine has its own" : kNoEntries;
    text += ListText("Classes", inspection["classes"], none);
    text += WeightBreaksText(inspection["weight_breaks"], none);
    text += AccessorialsText(inspection["accessorials"]);
    if (with_states) text += StatesText(inspection["states"]);
    return text;
}

std::string FailureText(const Json& failure) {
    const auto file = failure["file"].get<std::string>();
    const auto message = failure["message"].get<std::string>();
    return file.empty() ? message : fmt::format("file {}: {}", file, message);
}

}  // namespace cwt
