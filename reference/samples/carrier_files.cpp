#include "reference/samples/carrier_files.h"

#include <cstdlib>
#include <set>

#include "reference/samples/postal_map.h"

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
    const std::set<std::string_view> not_served = {"AK", "GU", "HI", "ND", "PR", "RI", "VI"};
    std::vector<ServedPrefix> prefixes;
    for (const PostalRange& range : PostalMap()) {
        if (range.low.front() > '9' || not_served.contains(range.state)) continue;
        const int low = std::atoi(range.low.data()), high = std::atoi(range.high.data());
        for (int prefix = low; prefix <= high; ++prefix) {
            prefixes.push_back({std::to_string(1000 + prefix).substr(1), range.state});
        }
    }
    for (const char* prefix : {"K1A", "M5H"}) prefixes.push_back({prefix, "ON"});
    return prefixes;
}

}  // namespace hundredweight::samples
