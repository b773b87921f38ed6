#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <hundredweight/exports.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "measures.h"
#include "reference/samples/sample_data.h"

namespace hundredweight::bench {
namespace {

namespace fs = std::filesystem;

/// A tariff set as it lies on disk, and what a load needs of it.
struct LoadedSet {
    std::string name;
    bool engine;
    std::vector<std::string> read;        ///< Extensions of the files whose content is wanted,
    std::vector<std::string> looked_for;  ///< of those that need but be there,
    std::vector<std::string> missing;     ///< and of those that may be missing, and are.
    std::string directory = fs::absolute(name).string() + "/";
};

std::vector<std::string> operator+(std::vector<std::string> some,
                                   const std::vector<std::string>& more) {
    some.insert(some.end(), more.begin(), more.end());
    return some;
}

const std::vector<std::string> kAlways = {"SET", "ACC", "SCC", "SC",  "ZP6", "WGT", "BSV",
                                          "ZPS", "CBS", "CMT", "SZP", "WSM", "DCH"};
const std::vector<std::string> kAlwaysThere = {"TRM", "SRV", "ZMC"};
const std::vector<std::string> kOwnRates = {"MCH", "CLS", "ZF2", "BSC", "FCC", "TBL"};
const std::vector<std::string> kOwnRatesThere = {"RTC", "RTE"};
const std::vector<std::string> kMexico = {"MEF", "MET"};
const std::vector<std::string> kFurther = {"ZFM", "ZP7", "FAC", "BSE", "ZF1", "LA",
                                           "RBA", "LMC", "LCA", "LAB", "LAM", "ADJ"};

void Load(RateContext& context) {
    int32_t found = 0;
    if (OpenAllFiles(&context, &found) != 1) throw std::runtime_error("the set does not load");
    CloseAllFiles(&context);
}

std::unique_ptr<RateContext> RecordOf(const LoadedSet& set) {
    auto context = std::make_unique<RateContext>();
    fmt::format_to(context->DataDir, "{}", set.directory);
    fmt::format_to(context->UserDir, "{}", set.directory);
    fmt::format_to(context->FileBase, "{}", samples::kBaseName);
    context->UseEngine = set.engine ? 1 : 0;
    return context;
}

/// Opens a file and reads it, if it is to be read.
void Fetch(const std::string& path, bool read_too) {
    static char content[1 << 16];
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status;
    if (descriptor < 0 || fstat(descriptor, &status) != 0) throw std::runtime_error(path);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (read_too && read(descriptor, content, size) != status.st_size) {
        throw std::runtime_error(path);
    }
    benchmark::DoNotOptimize(content);
    close(descriptor);
}

void List(const std::string& path) {
    DIR* const directory = opendir(path.c_str());
    while (const dirent* entry = readdir(directory)) benchmark::DoNotOptimize(entry);
    closedir(directory);
}

std::vector<std::string> Paths(const LoadedSet& set, const std::vector<std::string>& extensions) {
    std::vector<std::string> paths;
    for (const std::string& extension : extensions) {
        paths.push_back(set.directory + samples::kBaseName + "." + extension);
    }
    return paths;
}

/// The system's share of a load: what the files hold, and the names where one is missing.
Work Fetching(const LoadedSet& set) {
    return Repeatedly([directory = set.directory, read = Paths(set, set.read),
                       looked_for = Paths(set, set.looked_for), missing = Paths(set, set.missing)] {
        for (const std::string& path : read) Fetch(path, true);
        for (const std::string& path : looked_for) Fetch(path, false);
        for (const std::string& path : missing) {
            if (open(path.c_str(), O_RDONLY | O_CLOEXEC) >= 0) throw std::runtime_error(path);
        }
        if (!missing.empty()) List(directory);
    });
}

void Compare(Table& table, const LoadedSet& set, int others = 0) {
    const std::unique_ptr<RateContext> context = RecordOf(set);
    Load(*context);
    Pair pair;
    pair.what = "load and release of the " + set.name;
    pair.against = "bare open, fstat, read, close of its files";
    if (!set.missing.empty()) pair.against += ", one listing";
    if (others > 0) {
        pair.what += fmt::format(" beside {} other files", others);
        pair.curve = "a load beside other files";
        pair.size = others;
    }
    pair.goal = 1.1;
    table.Measure(pair, Repeatedly([&] { Load(*context); }), Fetching(set));
}

void WriteOtherFiles(const LoadedSet& set, int from, int to) {
    for (int i = from; i < to; ++i) std::ofstream(set.directory + fmt::format("INVOICE.{}", i));
}

/// A set whose own tables are all read.
void WriteSetOfAllTables(const LoadedSet& set) {
    samples::SetOptions options;
    options.engine = false;
    options.mexico = true;
    samples::WriteTariffSet(set.directory, options);
    std::fstream settings(set.directory + samples::kBaseName + ".SET",
                          std::ios::binary | std::ios::in | std::ios::out);
    for (const auto& [byte, flag] : {std::pair{168, 'Y'},
                                     {174, 'Y'},
                                     {197, 'Y'},
                                     {199, 'N'},
                                     {203, 'Y'},
                                     {207, 'N'},
                                     {209, 'N'}}) {
        settings.seekp(byte).put(flag);
    }
}

}  // namespace

void MeasureLoading(Table& table, const Extent& /*extent*/) {
    const LoadedSet for_engine = {"sample set with engine", true, kAlways, kAlwaysThere, kMexico};
    const LoadedSet alone = {"sample set without engine", false, kAlways + kOwnRates,
                             kAlwaysThere + kOwnRatesThere, kMexico};
    const LoadedSet all = {"set of all tables",
                           false,
                           kAlways + kOwnRates + kMexico + kFurther,
                           kAlwaysThere + kOwnRatesThere,
                           {}};
    samples::WriteTariffSet(for_engine.directory);
    samples::WriteTariffSet(alone.directory);
    WriteSetOfAllTables(all);
    for (const LoadedSet& set : {for_engine, alone, all}) Compare(table, set);
    int there = 0;
    for (const int others : {5000, 50000}) {
        WriteOtherFiles(for_engine, there, others);
        there = others;
        Compare(table, for_engine, others);
    }
}

}  // namespace hundredweight::bench
