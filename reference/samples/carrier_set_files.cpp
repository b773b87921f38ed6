#include <fmt/format.h>
#include <hundredweight/profile_record.h>

#include <string>
#include <vector>

#include "reference/samples/bytes.h"
#include "reference/samples/carrier_files.h"
#include "reference/samples/file_contents.h"

namespace hundredweight::samples {
namespace {

/// Base-rate points: one for all of Canada, one for each ZIP prefix.
constexpr int kPointCodes = 1000;
constexpr std::size_t kMinimumCharges = 100000;
constexpr int kProfiles = 10000;

std::vector<std::string> PointCodesInOrder() {
    std::vector<std::string> codes;
    codes.reserve(kPointCodes);
    for (int i = 0; i < kPointCodes; ++i) codes.push_back(fmt::format("PT{:04}", i));
    return codes;
}

}  // namespace

std::string CarrierPointCodes() {
    const std::vector<std::string> points = PointCodesInOrder();
    std::string table;
    for (std::size_t zip = 100; zip < 100000; ++zip) {
        const std::string text = fmt::format("{:05} ", zip);
        table += text + text + points[zip / 100];
    }
    // The letters and digits that Canadian postal codes begin with, two digits a record.
    for (const char letter : std::string("ABCEGHJKLMNPRSTVWXYZ")) {
        for (int digit = 0; digit < 10; digit += 2) {
            table += fmt::format("{0}{1}A0A0{0}{2}Z9Z9", letter, digit, digit + 1) + points[0];
        }
    }
    return table;
}

std::string CarrierTariffNames() {
    const std::vector<std::string> points = PointCodesInOrder();
    std::string table;
    for (const std::string& origin : points) {
        for (const std::string& destination : points) {
            table.append(origin).append(destination).append(kNationalTariff);
        }
    }
    return table;
}

std::string CarrierMinimumCharges() {
    // The sample's first, as the first that fits holds.
    std::string table = TariffSetFiles({}).at("SAMPLE.ZMC");
    constexpr std::size_t kLength = 41;
    for (int i = 0; table.size() < kMinimumCharges * kLength; ++i) {
        const int origin = 100 + i / kPointCodes, destination = i % kPointCodes;
        table += fmt::format("F{0:03}00{0:03}99{1:03}00{1:03}99000000999999", origin, destination);
        table += Bytes(0.0F) + Bytes(static_cast<float>(5000 + 10 * (i % 500)));
    }
    return table;
}

std::string CarrierProfiles() {
    std::string file = ProfileFiles().at("PROFILE.FIL");
    std::string customer = file.substr(file.size() - sizeof(ProfileRecord));
    for (int i = 3; i <= kProfiles; ++i) {
        customer.replace(0, 14, fmt::format("Customer {:05}", i));
        file += customer;
    }
    return file;
}

}  // namespace hundredweight::samples
