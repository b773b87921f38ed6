// The readers of the two forms.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "comparison/batch_row.h"

namespace cwt {

std::unique_ptr<RowReader> MakeNdjsonRowReader(const std::string& path);
std::unique_ptr<RowReader> MakeCsvRowReader(const std::string& path);

std::optional<RowStatus> StatusOf(const std::string& word);
const char* StatusWord(RowStatus status);

}  // namespace cwt
