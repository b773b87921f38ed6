#include "batch/verdict.h"

#include <fmt/format.h>

#include <set>

#include "shipment/spelling.h"

namespace cwt {

Verdict VerdictOf(const Row& row) {
    if (const auto* failure = std::get_if<Failure>(&row.outcome)) {
        return {"failed", "", "", failure->reason};
    }
    const auto* const refusals = std::get_if<Refusals>(&row.outcome);
    if (refusals == nullptr) return {"rated", "", "", ""};
    Verdict verdict = {"refused", "", "", ReasonOf(*refusals)};
    if (refusals->empty()) return verdict;
    if (refusals->front().code > 0) verdict.code = fmt::to_string(refusals->front().code);
    verdict.place = refusals->front().place;
    return verdict;
}

std::vector<std::string> PassedNames(const std::vector<std::string>& passed,
                                     std::vector<std::string> taken) {
    std::set<std::string> in_use;
    for (const std::string& name : taken) in_use.insert(UpperCase(name));
    std::vector<std::string> names;
    for (std::string name : passed) {
        while (!in_use.insert(UpperCase(name)).second) name.insert(0, "input_");
        names.push_back(std::move(name));
    }
    return names;
}

}  // namespace cwt
