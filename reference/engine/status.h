// What the engine has to say about a request: a code of four digits in the answer, and its text.
#pragma once

#include <string>
#include <string_view>

namespace hundredweight::reference {

/// From kOriginCityNotChosen on, the shipment is rated all the same: a library asks for the cities
/// at the postal code. After kUnknownClass it keeps the points, after all others it clears them.
enum class Status {
    kNone = 0,
    kUnknownClass = 11,
    kUnknownTariff = 101,
    kTariffNotInEffect = 102,
    kUnknownOrigin = 111,
    kUnknownDestination = 112,
    kNoLane = 113,
    kWeightNotValid = 114,
    kFactorNotValid = 115,
    kAmountTooLarge = 116,
    kOriginCityNotChosen = 123,
    kDestinationCityNotChosen = 124,
    kOriginCityUnknown = 125,
    kDestinationCityUnknown = 126,
};

/// Four digits.
std::string StatusCode(Status status);
/// The code followed by the message, at most 89 characters; empty for an unknown code.
std::string StatusText(std::string_view code);

}  // namespace hundredweight::reference
