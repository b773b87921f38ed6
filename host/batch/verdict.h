// What came of a row in a word, and why it is no bill.
#pragma once

#include <string>
#include <vector>

#include "batch/row.h"

namespace cwt {

struct Verdict {
    const char* status;  ///< "rated", "refused" or "failed".
    std::string code;    ///< Of the first refusal, like its place; empty when there is none.
    std::string place;
    std::string reason;  ///< All refusals, or why the row failed.
};

Verdict VerdictOf(const Row& row);

/// The names of passed columns in a table that has columns of its own: one that is taken, in
/// whatever letters, begins with "input_".
std::vector<std::string> PassedNames(const std::vector<std::string>& passed,
                                     std::vector<std::string> taken);

}  // namespace cwt
