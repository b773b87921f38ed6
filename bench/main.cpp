// Measures what the product costs, as ratios, and writes them as a table.
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "measures.h"
#include "session/messages.h"

namespace {

using namespace hundredweight::bench;
namespace fs = std::filesystem;

/// A directory to work in, that goes in the end.
class WorkingDirectory {
 public:
    WorkingDirectory()
        : path_(fs::temp_directory_path() / fmt::format("hundredweight-bench-{}", getpid())) {
        fs::create_directory(path_);
        fs::current_path(path_);
    }
    ~WorkingDirectory() {
        std::error_code error;
        fs::current_path("/", error);
        fs::remove_all(path_, error);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

 private:
    fs::path path_;
};

/// Turns of A and B, short ones: what disturbs the machine then disturbs both.
void SetUpTurns() {
    const char* arguments[] = {"benchmark", "--benchmark_enable_random_interleaving=true",
                               "--benchmark_min_time=0.05"};
    int count = static_cast<int>(std::size(arguments));
    benchmark::Initialize(&count, const_cast<char**>(arguments));
}

/// The parts that are measured, by name.
const std::map<std::string, void (*)(Table&, const Extent&)> kParts = {
    {"batch", MeasureRows},      {"start", MeasureStart},       {"engine", MeasureEngine},
    {"loading", MeasureLoading}, {"resident", MeasureResident}, {"lookups", MeasureLookups},
    {"rating", MeasureRating},
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures what rating costs, as ratios of two that take turns.");
    Table table;
    fs::path out;
    Extent extent;
    std::vector<std::string> names;
    for (const auto& [name, measure] : kParts) names.push_back(name);
    app.add_option("PART", names, "What to measure; everything unless told.")
        ->check(CLI::IsMember(names));
    app.add_option("--out", out, "Write performance.md and performance.json to this directory.");
    app.add_option("--rows", extent.rows, "How long the longest batch is, in rows.")
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        if (!out.empty()) out = absolute(out);
        const WorkingDirectory directory;
        SetUpTurns();
        cwt::CollectMessageBoxes();
        for (const std::string& name : names) kParts.at(name)(table, extent);
        if (!out.empty()) {
            fs::create_directories(out);
            std::ofstream(out / "performance.md") << table.Markdown();
            std::ofstream(out / "performance.json") << table.Json();
        }
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "benchmark: {}\n", error.what());
        return 2;
    }
}
