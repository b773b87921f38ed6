#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

#include "command_run.h"
#include "data_sets.h"
#include "measures.h"

namespace hundredweight::bench {
namespace {

namespace fs = std::filesystem;

Work Program(const Words& words) {
    return Repeatedly([words] {
        if (RunCommand(words) != 0) throw std::runtime_error(words[0] + ": did not end well");
    });
}

Words RateOne(const fs::path& data) {
    return {HWT_CWT, "rate", data / "shipments/01-deficit-and-discount.json"};
}

/// `cat` of the set's files but profiles and minimum charges, in which a rating only searches.
Words CatFiles(const fs::path& data) {
    Words words = {"/bin/cat"};
    for (const fs::directory_entry& entry : fs::directory_iterator(data)) {
        const fs::path name = entry.path().filename();
        if (entry.is_regular_file() && name != "PROFILE.FIL" && name.extension() != ".ZMC") {
            words.push_back(entry.path());
        }
    }
    return words;
}

void AddMemory(Table& table, const fs::path& data, const Pair& pair) {
    const Words files = CatFiles(data);
    std::uintmax_t bytes = 0;
    for (auto file = files.begin() + 1; file != files.end(); ++file) bytes += fs::file_size(*file);
    table.Add(pair, static_cast<double>(PeakBytes(RateOne(data))), static_cast<double>(bytes));
}

}  // namespace

void MeasureStart(Table& table, const Extent& /*extent*/) {
    constexpr const char* kTime = "`cwt rate`, one shipment, from start to end";
    constexpr const char* kMemory = "memory of `cwt rate`";
    const fs::path sample = SampleSet(), carrier = CarrierSet();
    table.Measure(
        {.what = kTime, .against = "`true`", .goal = 2, .clock = Clock::kWall, .brief = kTime},
        Program(RateOne(sample)), Program({"/bin/true"}));
    table.Measure({.what = fmt::format("{}, at a carrier's size", kTime),
                   .against = "`cat` of its files",
                   .clock = Clock::kWall,
                   .brief = kTime,
                   .set = Set::kCarrier},
                  Program(RateOne(carrier)), Program(CatFiles(carrier)));
    AddMemory(table, sample, {.what = kMemory, .against = "its files", .brief = kMemory});
    AddMemory(table, carrier,
              {.what = fmt::format("{} at a carrier's size", kMemory),
               .against = "its files",
               .brief = kMemory,
               .set = Set::kCarrier});
}

}  // namespace hundredweight::bench
