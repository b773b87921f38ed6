#include "commands/tariff_options.h"

#include <fmt/core.h>

#include <vector>

#include "commands/commands.h"
#include "session/messages.h"
#include "text/letters.h"
#include "text/path_text.h"

namespace cwt {

std::string SetIn(const std::filesystem::path& directory, const std::string& told) {
    if (!told.empty()) return told;
    std::vector<std::string> sets;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
        if (LowerCase(PathText(entry.path().extension())) == ".set") {
            sets.push_back(PathText(entry.path().stem()));
        }
    }
    if (error) throw Broken(PathText(directory) + ": " + error.message());
    if (sets.size() == 1) return sets[0];
    throw Broken(PathText(directory) + (sets.empty() ? ": has no settings of a set (NAME.SET)"
                                                     : ": has several sets; --set names one"));
}

void SayFindings(const Findings& findings) {
    constexpr std::size_t kMost = 100;
    std::size_t said = 0;
    for (const auto level : {Finding::kError, Finding::kWarning, Finding::kNote}) {
        for (const Finding& finding : findings.list()) {
            if (finding.level == level && said++ < kMost) Say(FindingText(finding));
        }
    }
    if (said > kMost) Say(fmt::format("and {} more", said - kMost));
}

}  // namespace cwt
