// Measures what the product costs, as ratios, and writes them as a table.
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "measures.h"
#include "report.h"
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

struct Part {
    const char* name;
    void (*measure)(Table&, const Extent&);
    const char* what;
};

constexpr Part kParts[] = {
    {"batch", MeasureRows, "rows through `cwt batch`, explained, and the memory of a batch"},
    {"start", MeasureStart, "`cwt rate` from start to end, and its memory"},
    {"session", MeasureSession, "shipments in a session that stays"},
    {"engine", MeasureEngine, "the reference engine: ratings and starts, by the lanes"},
    {"loading", MeasureLoading, "loads of tariff sets, also beside many other files"},
    {"lookups", MeasureLookups, "point codes and tariff names, by the records"},
    {"resident", MeasureResident, "minimum charges and profiles, by the records"},
    {"rating", MeasureRating, "RateShipment without the engine's time"},
};

std::string PartsText() {
    std::string text = "Parts:\n";
    for (const Part& part : kParts) text += fmt::format("  {:9} {}\n", part.name, part.what);
    return text +
           "batch, start, session and engine take 244 MB in the temporary directory,"
           " engine 60 MB more.";
}

/// A run of some parts keeps its outcome apart from that of a whole one.
std::string FileName(const std::vector<std::string>& named) {
    std::string name = "performance";
    for (const std::string& part : named) name += "-" + part;
    return name;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures what rating costs, as ratios of two that take turns.");
    Table table;
    fs::path out;
    Extent extent;
    std::vector<std::string> known, named;
    for (const Part& part : kParts) known.emplace_back(part.name);
    app.add_option("PART", named, "What to measure; everything unless told.")
        ->check(CLI::IsMember(known));
    app.footer(PartsText());
    app.add_option("--out", out,
                   "Write performance.md and performance.json to this directory; of some parts"
                   " performance-PART.md and so on.");
    app.add_option("--rows", extent.rows, "How long the longest batch is, in rows.")
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        if (!out.empty()) out = absolute(out);
        const WorkingDirectory directory;
        SetUpTurns();
        cwt::CollectMessageBoxes();
        for (const Part& part : kParts) {
            if (named.empty() || std::ranges::find(named, part.name) != named.end()) {
                part.measure(table, extent);
            }
        }
        if (!out.empty()) {
            fs::create_directories(out);
            std::ofstream(out / (FileName(named) + ".md")) << Markdown(table.rows());
            std::ofstream(out / (FileName(named) + ".json")) << Json(table.rows());
        }
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "benchmark: {}\n", error.what());
        return 2;
    }
}
