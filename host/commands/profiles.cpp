#include <nlohmann/json.hpp>
#include <vector>

#include "commands/commands.h"
#include "commands/value_kinds.h"
#include "session/look_up_documents.h"
#include "session/profile_list.h"
#include "session/tariff_set.h"

namespace cwt {
namespace {

struct ProfilesOptions : Options {
    std::string name;  ///< Empty: all.
};

int List(RateContext& context, bool json) {
    const std::vector<std::string> names = ProfileNames(context);
    if (json) {
        Print(ProfilesDocument(names));
    } else {
        for (const std::string& name : names) Print(name + "\n");
    }
    return kDone;
}

int Show(RateContext& context, const std::string& name, bool json) {
    if (!LoadProfile(context, name))
        return Refuse("", {UnknownProfile(ProfileNames(context), name)});
    const nlohmann::ordered_json profile = ProfileJson(context);
    if (json) {
        PrintJson(profile);
    } else {
        Print(ProfileText(profile));
    }
    return kDone;
}

int Profiles(const ProfilesOptions& options) {
    const Sources sources = FindSources(options, ".");
    RequireProfiles(sources.data);
    TariffSet set(sources);
    return options.name.empty() ? List(set.context(), options.json)
                                : Show(set.context(), options.name, options.json);
}

}  // namespace

void AddProfiles(CLI::App& app, int& exit_code) {
    const auto options = std::make_shared<ProfilesOptions>();
    CLI::App* command = AddCommand(app, "profiles", "List the profiles, or show one by name.",
                                   Profiles, options, exit_code);
    command->add_option("NAME", options->name, "The profile to show. Default: all names.")
        ->type_name(kProfileValue);
    AddData(command, *options);
    AddJson(command, *options);
}

}  // namespace cwt
