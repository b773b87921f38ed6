// What is found in a tariff, said to the one who runs a command.
#pragma once

#include "tariffs/finding.h"

namespace cwt {

/// Writes findings to standard error, errors and warnings first. Of many, those that have room.
void SayFindings(const Findings& findings);

}  // namespace cwt
