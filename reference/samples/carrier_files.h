// The sample data at the size of a carrier: its tariff SMPLNATL is a national one.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace hundredweight::samples {

/// A file that stands in the place of the sample's own of that name.
struct CarrierFile {
    const char* name;
    std::string (*build)();
};
std::span<const CarrierFile> CarrierFiles();

/// The carrier's tariff, which the sample has too.
inline constexpr const char* kNationalTariff = "SMPLNATL";

/// A prefix of postal codes that the carrier serves.
struct ServedPrefix {
    std::string prefix;
    std::string state;
};
/// 895, ascending.
std::vector<ServedPrefix> ServedPrefixes();

// The engine's rate base.
std::string CarrierRates();   ///< 2,000 scales.
std::string CarrierLanes();   ///< 800,130: from each prefix to each other.
std::string CarrierPoints();  ///< 43,000, and the sample's.

// The tariff set, and the user's profiles.
std::string CarrierPointCodes();      ///< 100,000 of CBS, which lead to a thousand points.
std::string CarrierTariffNames();     ///< A million of CMT, all pairs of these.
std::string CarrierMinimumCharges();  ///< 100,000 of ZMC.
std::string CarrierProfiles();        ///< 10,000, the sample's among them.

}  // namespace hundredweight::samples
