#include "commands/findings.h"

#include <fmt/core.h>

#include "commands/commands.h"

namespace cwt {

void SayFindings(const Findings& findings) {
    constexpr std::size_t kMost = 100;
    std::size_t said = 0;
    for (const auto level : {Finding::kError, Finding::kWarning, Finding::kNote}) {
        for (const Finding& finding : findings.list()) {
            if (finding.level == level && said++ < kMost) Say(FindingText(finding));
        }
    }
    said += findings.unlisted();
    if (said > kMost) Say(fmt::format("and {} more", said - kMost));
}

}  // namespace cwt
