#include "reference/samples/carrier_files.h"

#include <fmt/format.h>

#include <set>

#include "reference/samples/file_contents.h"

namespace hundredweight::samples {

std::span<const CarrierFile> CarrierFiles() {
    static constexpr CarrierFile kFiles[] = {
        {"tolvex-rates.txt", CarrierRates},   {"tolvex-lanes.txt", CarrierLanes},
        {"tolvex-points.txt", CarrierPoints}, {"SAMPLE.CBS", CarrierPointCodes},
        {"SAMPLE.CMT", CarrierTariffNames},   {"SAMPLE.ZMC", CarrierMinimumCharges},
        {"PROFILE.FIL", CarrierProfiles}};
    return kFiles;
}

std::vector<ServedPrefix> ServedPrefixes() {
    const std::set<std::string_view> not_served = {"AK", "GU", "HI", "ND", "PR", "RI", "VI", "XX"};
    constexpr std::size_t kEntry = 4;  // Bytes for each prefix from 001 on, the state first.
    const std::string states = TariffSetFiles({}).at("SAMPLE.SC");
    std::vector<ServedPrefix> prefixes;
    for (std::size_t i = 0; i < states.size() / kEntry; ++i) {
        const std::string state = states.substr(kEntry * i, 2);
        if (!not_served.contains(state)) prefixes.push_back({fmt::format("{:03}", i + 1), state});
    }
    for (const char* prefix : {"K1A", "M5H"}) prefixes.push_back({prefix, "ON"});
    return prefixes;
}

}  // namespace hundredweight::samples
