#include "reference/engine/status.h"

namespace hundredweight::reference {
namespace {

struct StatusMessage {
    Status status;
    const char* message;
};

constexpr StatusMessage kMessages[] = {
    {Status::kUnknownClass, "The tariff has no such class"},
    {Status::kUnknownTariff, "Tariff not on file"},
    {Status::kTariffNotInEffect, "Tariff not in effect on this date"},
    {Status::kUnknownOrigin, "Origin postal code not on file"},
    {Status::kUnknownDestination, "Destination postal code not on file"},
    {Status::kNoLane, "The tariff has no lane between these points"},
    {Status::kWeightNotValid, "Weight missing or not valid"},
    {Status::kFactorNotValid, "Rate factor not valid"},
    {Status::kAmountTooLarge, "Charges too large for the answer"},
    {Status::kOriginCityNotChosen, "Origin city not chosen"},
    {Status::kDestinationCityNotChosen, "Destination city not chosen"},
    {Status::kOriginCityUnknown, "Origin city not at this postal code"},
    {Status::kDestinationCityUnknown, "Destination city not at this postal code"},
};

}  // namespace

std::string StatusCode(Status status) {
    const auto digits = std::to_string(static_cast<int>(status));
    return std::string(4 - digits.size(), '0') + digits;
}

std::string StatusText(std::string_view code) {
    for (const auto& [status, message] : kMessages) {
        if (StatusCode(status) == code) return StatusCode(status) + message;
    }
    return {};
}

}  // namespace hundredweight::reference
