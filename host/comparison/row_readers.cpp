#include "comparison/row_readers.h"

#include <algorithm>
#include <iterator>

#include "batch/batch_names.h"

namespace cwt {
namespace {

constexpr const char* kStatusWords[] = {"rated", "refused", "failed"};

}  // namespace

std::optional<RowStatus> StatusOf(const std::string& word) {
    const auto* const found = std::ranges::find(kStatusWords, word);
    if (found == std::end(kStatusWords)) return std::nullopt;
    return static_cast<RowStatus>(found - kStatusWords);
}

const char* StatusWord(RowStatus status) {
    return kStatusWords[static_cast<int>(status)];
}

std::unique_ptr<RowReader> MakeRowReader(const std::string& path, const std::string& form) {
    return InputForm(path, form) == Form::kCsv ? MakeCsvRowReader(path) : MakeNdjsonRowReader(path);
}

}  // namespace cwt
