#include "batch/batch_terms.h"

#include <fmt/format.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string_view>

#include "files/digest.h"
#include "platform/system.h"
#include "session/tariff_set.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

bool IsOfABatch(std::string_view name) {
    constexpr std::string_view kEndings[] = {".ndjson", ".jsonl",   ".csv",     ".json",
                                             ".html",   ".gz",      ".zst",     ".sqlite",
                                             ".db",     ".partial", ".journal", ".partial-journal",
                                             ".log"};
    for (const std::string_view ending : kEndings) {
        if (name.ends_with(ending)) return true;
    }
    return false;
}

std::string StateOf(const fs::path& file) {
    return fmt::format("{} bytes {:016x}", file_size(file), FileDigest(file));
}

}  // namespace

nlohmann::ordered_json TermsOf(const BatchOptions& options, const std::string& header) {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(options.sources.data)) {
        const std::string name = PathText(entry.path().filename());
        if (!entry.is_regular_file() || IsOfABatch(name)) continue;
        if (!IsStandardStream(entry.path())) files[name] = StateOf(entry.path());
    }
    const fs::path discounts = TariffSet(options.sources).DiscountsElsewhere();
    if (!discounts.empty()) files["./" + PathText(discounts.filename())] = StateOf(discounts);
    const Part part = options.part.value_or(Part());
    return {{"version", options.version},
            {"data", PathText(options.sources.data)},
            {"set", options.sources.set},
            {"engine", options.sources.engine},
            {"service-guide", options.sources.service_guide},
            {"from", options.from == Form::kCsv ? "csv" : "ndjson"},
            {"part", fmt::format("{}/{}", part.number, part.count)},
            {"columns", header},
            {"files", files}};
}

}  // namespace cwt
