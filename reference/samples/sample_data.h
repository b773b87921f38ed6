// A complete set of sample data of our own making: a tariff set, the reference engine's rate base,
// the reference service guide's terminals and shipments that show what rating does.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace hundredweight::samples {

/// Base name of the tariff set.
inline constexpr const char* kBaseName = "SAMPLE";

/// Variants of the tariff set. Extensions are given without their dot: "DCH", "SC".
struct SetOptions {
    std::set<std::string> omitted;               ///< Files that are not written.
    std::map<std::string, std::size_t> lengths;  ///< Files cut or extended by zeros to a length.
    bool engine = true;      ///< The settings of a set that is rated by the engine.
    bool long_forms = true;  ///< LMC and LCA instead of MC and MCA.
    bool fallbacks = false;  ///< RTL and RCL instead of RTE and RTC.
    bool mexico = false;     ///< MEF, MET, ZFM and ZP7 as well.
};

/// How much data there are.
enum class Size {
    kSample,
    kCarrier,  ///< As many as a carrier with a national tariff has.
};

/// These create the directory, replace files of the same names (a link itself, not what it leads
/// to) and throw std::runtime_error or
/// std::filesystem::filesystem_error when they cannot.
void WriteTariffSet(const std::filesystem::path& directory, const SetOptions& options = {});
void WriteEngineData(const std::filesystem::path& directory);
void WriteServiceGuideData(const std::filesystem::path& directory);
/// PROFILE.FIL, as a user would keep it.
void WriteProfiles(const std::filesystem::path& directory);
/// One JSON file per shipment.
void WriteShipments(const std::filesystem::path& directory);
/// All of them in the directory, the shipments in "shipments" below it.
void WriteSampleData(const std::filesystem::path& directory, Size size = Size::kSample);

/// A file of the sample data that is in the directory already; empty when there is none.
std::filesystem::path FindSampleFile(const std::filesystem::path& directory);

}  // namespace hundredweight::samples
