#include "session/inspection.h"

#include <hundredweight/exports.h>

#include <nlohmann/json.hpp>
#include <optional>

#include "session/engine_answers.h"
#include "session/messages.h"
#include "session/profile_list.h"
#include "session/session.h"
#include "session/set_files.h"
#include "session/set_words.h"
#include "tariffs/families/family.h"
#include "text/field_text.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

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
                      {"meaning", file.family->words},
                      {"sheet", TextFileOf(*file.family)},
                      {"need", NeedText(file.need)},
                      {"present", !file.path.empty()}};
        if (file.size) entry["bytes"] = *file.size;
        if (file.size && file.record_size() > 0) {
            entry["records"] = file.records();
            entry["stray_bytes"] = file.stray_bytes();
        }
        list.push_back(entry);
    }
    return list;
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
                      {"labels", Labels(context)},
                      {"sections", Sections(context)},
                      {"table_names", own_tables["table_names"]},
                      {"classes", own_tables["classes"]},
                      {"weight_breaks", WeightBreaks(context)},
                      {"accessorials", Accessorials(context)},
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

}  // namespace cwt
