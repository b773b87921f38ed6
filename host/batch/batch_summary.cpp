#include "batch/batch_summary.h"

#include <fmt/core.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "batch/batch_names.h"
#include "files/output_file.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char* kSchema = "hundredweight/summary/1";

double RowsPerSecond(const BatchResult& result) {
    return result.seconds > 0 ? static_cast<double>(result.rows_here) / result.seconds : 0;
}

/// With a decimal, since more of it says nothing.
double Rounded(double number) {
    return std::round(number * 10) / 10;
}

}  // namespace

std::string SummaryText(const BatchResult& result) {
    return fmt::format("{}\n  {} rows in {:.1f} seconds, {:.0f} rows a second", result.tally.Text(),
                       result.rows_here, result.seconds, RowsPerSecond(result));
}

Json SummaryJson(const BatchResult& result) {
    Json summary = {{"schema", kSchema},
                    {"complete", !result.stopped_before},
                    {"failure", nullptr},
                    {"rows", result.tally.rows()}};
    summary.update(result.tally.Json());
    summary["rows_in_this_run"] = result.rows_here;
    summary["seconds"] = Rounded(result.seconds);
    summary["rows_per_second"] = Rounded(RowsPerSecond(result));
    return summary;
}

Json FailureSummaryJson(const std::string& reason) {
    return {{"schema", kSchema}, {"complete", false}, {"failure", reason}};
}

void RequireSummary(const std::string& name, const BatchOptions& options) {
    const fs::path path = weakly_canonical(absolute(PathOf(name)));
    std::vector<std::string> others = FilesOfOutput(options.output);
    others.push_back(options.input);
    for (const std::string& other : others) {
        if (!IsSameFile(name, other)) continue;
        throw std::runtime_error(name + ": is a file of the rows, and cannot be the summary too");
    }
    if (!is_directory(path.parent_path())) {
        throw std::runtime_error(name + ": its directory is not there");
    }
    if (!exists(path)) return;
    std::ifstream file(path, std::ios::binary);
    const Json old = Json::parse(file, nullptr, false);
    if (!old.is_object() || old.value("schema", Json()) != kSchema) {
        throw std::runtime_error(name + ": is there already, and is no summary");
    }
}

void WriteSummary(const std::string& name, const Json& summary) {
    OutputFile file(name, true);
    file.Write(summary.dump(2) + '\n');
    file.Finish();
}

}  // namespace cwt
