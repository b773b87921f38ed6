#include "session/inspection.h"

#include <fmt/core.h>
#include <hundredweight/exports.h>

#include <nlohmann/json.hpp>
#include <optional>

#include "session/engine_answers.h"
#include "session/messages.h"
#include "session/profile_list.h"
#include "session/session.h"
#include "session/set_files.h"
#include "text/field_text.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

std::string Character(char character) {
    return TextOf(&character, 1);
}

Json Settings(const RateContext& c) {
    return {{"SetVersion", +c.SetVersion},
            {"ZipLength", TextOf(c.ZipLength)},
            {"LabFilesFlag", Character(c.LabFilesFlag)},
            {"Zp7FileFlag", Character(c.Zp7FileFlag)},
            {"AccFileFlag", Character(c.AccFileFlag)},
            {"NoBaseTablesFlag", Character(c.NoBaseTablesFlag)},
            {"OptionFlag3", Character(c.OptionFlag3)},
            {"McaFileFlag", Character(c.McaFileFlag)},
            {"OptionFlag5", Character(c.OptionFlag5)},
            {"SkipZipTablesFlag", Character(c.SkipZipTablesFlag)},
            {"NoBseFlag", Character(c.NoBseFlag)},
            {"OptionFlag8", Character(c.OptionFlag8)},
            {"OptionFlag9", Character(c.OptionFlag9)},
            {"TariffSourceCode", Character(c.TariffSourceCode)},
            {"SurchargeOnGross", Character(c.SurchargeOnGross)},
            {"SetByte255", TextOf(c.SetByte255)},
            {"SetByte260", Character(c.SetByte260)},
            {"NoFlatDiscountFlag", Character(c.NoFlatDiscountFlag)}};
}

Json Defaults(const RateContext& c) {
    return {{"DefModeP1", +c.DefModeP1},
            {"DefModeP2", +c.DefModeP2},
            {"ConversionOn", +c.ConversionOn},
            {"SurchargeOn", +c.SurchargeOn},
            {"DiscountOn", +c.DiscountOn},
            {"DefByte31", Character(c.DefByte31)},
            {"DefModeCFlag", Character(c.DefModeCFlag)},
            {"ConversionRate", +c.ConversionRate},
            {"DefFactorLow", +c.DefFactorLow},
            {"RateFactor", +c.RateFactor},
            {"DefModeP3", +c.DefModeP3},
            {"DefModeZ", +c.DefModeZ},
            {"DefFactorHigh", +c.DefFactorHigh},
            {"DefLayoutMark", +c.DefLayoutMark},
            {"DefBreakIndex", TextOf(c.DefBreakIndex)},
            {"ProfileIndex", +c.ProfileIndex},
            {"DefBreakCount", TextOf(c.DefBreakCount)},
            {"ProfileFileCurrent", Character(c.ProfileFileCurrent)}};
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
        breaks.push_back({{"name", TextOf(c.WeightBreakName[i])},
                          {"from", +c.WeightBreakMin[i]},
                          {"to", +c.WeightBreakMax[i]}});
    }
    return breaks;
}

/// The ranges of 3-digit ZIP prefixes and of letter prefixes that share a state.
Json States(const RateContext& c) {
    Json states = Json::array();
    const auto prefix = [](std::size_t entry) { return fmt::format("{:03}", entry + 1); };
    const auto state_of = [&](std::size_t entry) {
        return TextOf(reinterpret_cast<const char*>(c.ScTable[entry]), 2);
    };
    for (std::size_t i = 0; c.ScTable[0][0] != 0 && i < std::size(c.ScTable); ++i) {
        if (states.empty() || states.back()["state"] != state_of(i)) {
            states.push_back({{"state", state_of(i)}, {"from", prefix(i)}});
        }
        states.back()["to"] = prefix(i);
    }
    for (int32_t i = 0; c.SccTable != nullptr && i < c.SccCount; ++i) {
        const char* const range = reinterpret_cast<const char*>(c.SccTable) + std::ptrdiff_t{8} * i;
        states.push_back({{"state", TextOf(range, 2)},
                          {"from", TextOf(range + 2, 3)},
                          {"to", TextOf(range + 5, 3)}});
    }
    return states;
}

const char* NeedText(Need need) {
    switch (need) {
        case Need::kRequired:
            return "required";
        case Need::kOptional:
            return "optional";
        case Need::kNotRead:
            break;
    }
    return "not read";
}

Json Files(const std::vector<SetFile>& files) {
    Json list = Json::array();
    for (const SetFile& file : files) {
        Json entry = {{"extension", file.extension},
                      {"need", NeedText(file.need)},
                      {"present", !file.path.empty()}};
        if (file.size) entry["bytes"] = *file.size;
        if (file.size && file.record_size > 0) {
            entry["records"] = file.records();
            entry["stray_bytes"] = file.stray_bytes();
        }
        list.push_back(entry);
    }
    return list;
}

std::string FileText(const Json& file) {
    const auto need = file["need"].get<std::string>();
    std::string text = fmt::format("  {:<5}{:<9}", file["extension"].get<std::string>(), need);
    if (!file["present"].get<bool>()) return text + (need == "required" ? " MISSING\n" : " -\n");
    if (!file.contains("bytes")) return text + " no regular file\n";
    text += fmt::format("{:>9} bytes", file["bytes"].get<std::uintmax_t>());
    if (file.contains("records")) {
        text += fmt::format("{:>7} records", file["records"].get<std::uintmax_t>());
        const auto stray = file["stray_bytes"].get<std::uintmax_t>();
        if (stray > 0) text += fmt::format(", {} stray bytes", stray);
    }
    return text + '\n';
}

/// A value as a reader wants it: texts without quotes, nothing as a dash.
std::string ValueText(const Json& value) {
    if (!value.is_string()) return value.dump();
    const auto text = value.get<std::string>();
    return text.empty() ? "-" : text;
}

std::string FieldsText(const char* title, const Json& fields) {
    std::string text = fmt::format("\n{}\n", title);
    for (const auto& [name, value] : fields.items()) {
        text += fmt::format("  {:<20}{}\n", name, ValueText(value));
    }
    return text;
}

std::string ListText(const char* title, const Json& list) {
    std::string text = fmt::format("\n{}\n ", title);
    for (const Json& value : list) text += ' ' + ValueText(value);
    return text + '\n';
}

std::string WeightBreaksText(const Json& breaks) {
    std::string text = "\nWeight breaks (pounds)\n";
    for (const Json& entry : breaks) {
        text += fmt::format("  {:<8}{:>8} - {}\n", ValueText(entry["name"]),
                            ValueText(entry["from"]), ValueText(entry["to"]));
    }
    return text;
}

/// One line a state, with all its ranges.
std::string StatesText(const Json& ranges) {
    Json by_state = Json::object();
    for (const Json& range : ranges) {
        const std::string from = ValueText(range["from"]);
        const std::string to = ValueText(range["to"]);
        by_state[ValueText(range["state"])].push_back(from == to ? from
                                                                 : fmt::format("{}-{}", from, to));
    }
    std::string text = "\nStates by postal-code prefix\n";
    for (const auto& [state, list] : by_state.items()) {
        text += fmt::format("  {} ", state);
        for (const Json& range : list) text += ' ' + ValueText(range);
        text += '\n';
    }
    return text;
}

/// The codes and names of a set that the library reads only when it rates by the set's own tables.
Json OwnTables(const Sources& sources) {
    TariffSet set(sources);
    set.context().UseEngine = 0;
    set.Load();
    return {{"table_names", TableNames(set.context())}, {"classes", ClassesOf(set.context())}};
}

/// Starts the partners. Result: what each is, whether it works and what is wrong.
Json Partners(const Sources& sources, const InspectionScope& scope) {
    Json partners = Json::array();
    const auto add = [&](const char* role, const std::string& library, const auto& start) {
        Json partner = {{"role", role}, {"library", library}, {"works", true}, {"says", ""}};
        try {
            start();
        } catch (const Broken& broken) {
            partner["works"] = false;
            partner["says"] = broken.what();
        }
        partners.push_back(partner);
    };
    std::optional<Session> session;
    add("engine", sources.engine, [&] {
        session.emplace(sources);
        session->RequireWorkingEngine();
    });
    if (session && scope.service_guide) {
        add("service guide", sources.service_guide, [&] { session->StartServiceGuide(); });
    }
    return partners;
}

Json FailureOf(const std::string& file, int32_t code, const std::string& message) {
    return {{"file", file}, {"code", code}, {"message", message}};
}

/// The first thing that is broken about a set; null when nothing is.
Json FindFailure(TariffSet& set, int32_t code, const std::vector<SetFile>& files) {
    try {
        set.RequireSound(files, code);
        if (code == 0) code = set.LoadTerms();
        const std::filesystem::path profiles = set.ProfileFile();
        if (code == 0 && !profiles.empty()) RequireWholeProfiles(profiles);
    } catch (const Broken& broken) {
        return FailureOf("", code, broken.what());
    }
    if (code == 0) return nullptr;
    return FailureOf(FileOfCode(code, files), code, Describe(code));
}

}  // namespace

Json Inspect(const Sources& sources, const InspectionScope& scope) {
    const Json own_tables = OwnTables(sources);
    Json inspection;
    {
        TariffSet set(sources);
        RateContext& context = set.context();
        context.UseEngine = scope.engine ? 1 : 0;
        const int32_t code = set.Load();
        const std::vector<SetFile> files = set.Files();
        const Json failure = FindFailure(set, code, files);
        const bool dated = OpenLevelFile(&context, (sources.set + ".LVL").c_str()) == 1;
        inspection = {{"schema", "hundredweight/set/1"},
                      {"set", sources.set},
                      {"directory", PathText(sources.data)},
                      {"rating", scope.engine ? "engine" : "own tables"},
                      {"loads", code == 0},
                      {"failure", failure},
                      {"partners", Json::array()},
                      {"files", Files(files)},
                      {"level_date", dated ? Json(TextOf(context.LevelFileDate)) : Json(nullptr)},
                      {"settings", Settings(context)},
                      {"defaults", Defaults(context)},
                      {"labels", Labels(context)},
                      {"table_names", own_tables["table_names"]},
                      {"classes", own_tables["classes"]},
                      {"weight_breaks", WeightBreaks(context)},
                      {"states", States(context)}};
    }
    if (!scope.engine || !inspection["failure"].is_null()) return inspection;
    inspection["partners"] = Partners(sources, scope);
    for (const Json& partner : inspection["partners"]) {
        if (partner["works"] == true || !inspection["failure"].is_null()) continue;
        inspection["failure"] = FailureOf("", 0, partner["says"].get<std::string>());
    }
    return inspection;
}

std::string InspectionText(const Json& inspection, bool with_states) {
    const bool loads = inspection["loads"].get<bool>();
    std::string text =
        fmt::format("Set {} in {}, for rating by {}\n", ValueText(inspection["set"]),
                    ValueText(inspection["directory"]),
                    inspection["rating"] == "engine" ? "an engine" : "its own tables");
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
    text += FieldsText("Settings", inspection["settings"]);
    text += FieldsText("Defaults", inspection["defaults"]);
    text += ListText("Labels", inspection["labels"]);
    text += ListText("Table names", inspection["table_names"]);
    text += ListText("Classes", inspection["classes"]);
    text += WeightBreaksText(inspection["weight_breaks"]);
    if (with_states) text += StatesText(inspection["states"]);
    return text;
}

std::string FailureText(const Json& failure) {
    const auto file = failure["file"].get<std::string>();
    const auto message = failure["message"].get<std::string>();
    return file.empty() ? message : fmt::format("file {}: {}", file, message);
}

}  // namespace cwt
