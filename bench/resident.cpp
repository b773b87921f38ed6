#include <fcntl.h>
#include <fmt/format.h>
#include <hundredweight/exports.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "measures.h"
#include "rating/zmc_lookup.h"
#include "tariff/zmc_file.h"

namespace hundredweight::bench {
namespace {

constexpr int kMinimumCharges[] = {100, 1000, 10000, 100000};
constexpr int kProfiles[] = {10, 100, 1000, 10000};

/// A record whose files lie in a directory named for how much they hold.
std::unique_ptr<RateContext> MakeRecord(int count) {
    auto context = std::make_unique<RateContext>();
    for (char* directory : {context->DataDir, context->UserDir}) {
        fmt::format_to(directory, "{}/", count);
    }
    std::strcpy(context->FileBase, "MANY");
    return context;
}

/// Minimum charges from each of many ranges of origins to each of many of destinations.
std::vector<ZmcFileRecord> MakeMinimumCharges(int count) {
    std::vector<ZmcFileRecord> records;
    for (int i = 0; i < count; ++i) {
        ZmcFileRecord record = {};
        const int origin = i / 300 * 10, destination = i % 300 * 100;
        const std::string text =
            fmt::format("{}{:05}{:05}{:05}{:05}000000zzzzzz", i % 3 == 0 ? 'F' : ' ', origin,
                        origin + 9, destination + 50000, destination + 50099);
        std::memcpy(static_cast<void*>(&record), text.data(), text.size());
        record.MinimumAmount = static_cast<float>(i + 1);
        records.push_back(record);
    }
    return records;
}

void WriteMinimumCharges(int count) {
    const std::vector<ZmcFileRecord> records = MakeMinimumCharges(count);
    std::filesystem::create_directory(std::to_string(count));
    std::ofstream(fmt::format("{}/MANY.ZMC", count), std::ios::binary)
        .write(reinterpret_cast<const char*>(records.data()),
               static_cast<std::streamsize>(records.size() * sizeof(ZmcFileRecord)));
}

bool Covers(const char* low, const char* high, const char* text, std::size_t size) {
    return std::memcmp(low, text, size) <= 0 && std::memcmp(text, high, size) <= 0;
}

const ZmcFileRecord* Scan(const std::vector<ZmcFileRecord>& records, const RateContext& context,
                          const char* rate_code) {
    const char* first = context.OrigZip;
    const char* second = context.DestZip;
    const bool ascending = std::memcmp(first, second, 5) <= 0;
    for (const ZmcFileRecord& record : records) {
        const bool swapped = !ascending && record.Direction != 'F';
        if (Covers(record.FirstLow, record.FirstHigh, swapped ? second : first, 5) &&
            Covers(record.SecondLow, record.SecondHigh, swapped ? first : second, 5) &&
            Covers(record.RateCodeLow, record.RateCodeHigh, rate_code, 6)) {
            return &record;
        }
    }
    return nullptr;
}

void MeasureMinimumCharges(Table& table) {
    for (const int count : kMinimumCharges) {
        const std::vector<ZmcFileRecord> records = MakeMinimumCharges(count);
        const std::unique_ptr<RateContext> context = MakeRecord(count);
        std::strcpy(context->RateCode, "001234");
        context->ZmcCount = count;
        std::memcpy(context->OrigZip, records.back().FirstLow, 5);
        std::memcpy(context->DestZip, records.back().SecondLow, 5);
        const auto look_up = [&] {
            context->ZmcMinimum = 0;
            LookupZmc(*context);
        };
        const auto scan = [&] { return Scan(records, *context, "400123"); };
        for (int time = 0; time < 3; ++time) look_up();
        if (context->ZmcMinimum != static_cast<float>(count) || scan() != &records.back()) {
            throw std::runtime_error("the last record does not match");
        }
        table.Measure({.what = fmt::format("look-up of the last of {} minimum charges", count),
                       .against = "a scan of a table of them",
                       .goal = count == 100000 ? 0.01 : 0,
                       .curve = "minimum charges",
                       .size = static_cast<double>(count)},
                      Repeatedly(look_up), Repeatedly([&] { benchmark::DoNotOptimize(scan()); }));
    }
}

constexpr std::size_t kNameSize = sizeof(ProfileRecord::ProfileName);

std::string ProfileName(int number) {
    std::string name = fmt::format("Customer {}", number);
    name.resize(kNameSize);
    return name;
}

/// Profiles of which nothing but the name is filled.
void WriteProfileNames(int count) {
    constexpr auto kSize = static_cast<std::streamoff>(sizeof(ProfileRecord));
    std::filesystem::create_directory(std::to_string(count));
    std::ofstream file(fmt::format("{}/PROFILE.FIL", count), std::ios::binary);
    for (int i = 0; i < count; ++i) {
        const std::string name = ProfileName(i);
        file.seekp(i * kSize).write(name.data(), kNameSize);
    }
    file.seekp(count * kSize - 1).put('\0');
}

/// Finds a profile in a file that stays open, by one read per name.
void ReadNames(int descriptor, int count, const char* wanted) {
    char name[kNameSize];
    for (int i = 0; i < count; ++i) {
        const off_t at = static_cast<off_t>(i) * static_cast<off_t>(sizeof(ProfileRecord));
        if (pread(descriptor, name, sizeof name, at) != sizeof name) {
            throw std::runtime_error("a name cannot be read");
        }
        if (std::memcmp(name, wanted, sizeof name) == 0) return;
    }
    throw std::runtime_error("a name is not found");
}

void MeasureProfiles(Table& table) {
    for (const int count : kProfiles) {
        const std::unique_ptr<RateContext> context = MakeRecord(count);
        const std::string name = ProfileName(count - 1);
        const auto find = [&] {
            std::memcpy(context->Profile.ProfileName, name.data(), kNameSize);
            if (GetProfileRecord(context.get()) != 1) throw std::runtime_error("no such profile");
        };
        for (int time = 0; time < 3; ++time) find();
        const int descriptor =
            open(fmt::format("{}/PROFILE.FIL", count).c_str(), O_RDONLY | O_CLOEXEC);
        table.Measure({.what = fmt::format("the last of {} profiles, again", count),
                       .against = "one pread per name",
                       .goal = count == 100     ? 0.5
                               : count == 10000 ? 0.05
                                                : 0,
                       .curve = "profiles",
                       .size = static_cast<double>(count)},
                      Repeatedly(find),
                      Repeatedly([&] { ReadNames(descriptor, count, name.data()); }));
        close(descriptor);
    }
}

}  // namespace

void MeasureResident(Table& table, const Extent& /*extent*/) {
    for (const int count : kMinimumCharges) WriteMinimumCharges(count);
    for (const int count : kProfiles) WriteProfileNames(count);
    // A file that has just changed is read anew each time.
    std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    MeasureMinimumCharges(table);
    MeasureProfiles(table);
}

}  // namespace hundredweight::bench
