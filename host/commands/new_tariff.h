// A tariff to begin with, for those who have none.
#pragma once

#include <string>

namespace cwt {

/// Writes it to a folder that has none of its files. Result: the exit code.
int WriteNewTariff(const std::string& folder);

}  // namespace cwt
