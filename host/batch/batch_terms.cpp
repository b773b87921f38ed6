#include "batch/batch_terms.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "text/path_text.h"

namespace cwt {
namespace {

const char* NameOf(Form form) {
    if (form == Form::kDatabase) return "sqlite";
    return form == Form::kCsv ? "csv" : "ndjson";
}

}  // namespace

nlohmann::ordered_json TermsOf(const BatchOptions& options, const std::string& header,
                               const DataWatch& data) {
    const Part part = options.part.value_or(Part());
    return {{"version", options.version},
            {"data", PathText(options.sources.data)},
            {"set", options.sources.set},
            {"engine", options.sources.engine},
            {"service-guide", options.sources.service_guide},
            {"from", NameOf(options.from)},
            {"to", NameOf(options.to)},
            {"part", fmt::format("{}/{}", part.number, part.count)},
            {"columns", header},
            {"files", data.files()}};
}

}  // namespace cwt
