#include "comparison/row_readers.h"

#include <algorithm>
#include <iterator>

#include "session/messages.h"

namespace cwt {
namespace {

constexpr const char* kStatusWords[] = {"rated", "refused", "failed"};

/// Which form a file is in, by its name; compression aside.
std::string FormOf(std::string name) {
    for (const char* packed : {".gz", ".zst"}) {
        if (name.ends_with(packed)) name.resize(name.rfind('.'));
    }
    if (name.ends_with(".csv")) return "csv";
    if (name.ends_with(".ndjson") || name.ends_with(".jsonl")) return "ndjson";
    throw Broken(name + ": its name does not tell its form; --from ndjson or --from csv does");
}

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
    return (form.empty() ? FormOf(path) : form) == "csv" ? MakeCsvRowReader(path)
                                                         : MakeNdjsonRowReader(path);
}

}  // namespace cwt
