// What the library has to say.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "shipment/refusal.h"

namespace cwt {

/// Anything that is wrong with the data, a partner or the command line, no shipment's fault.
struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Keeps the texts of the library's message boxes instead of showing them.
void CollectMessageBoxes();

/// The texts of the boxes since the last call.
std::vector<std::string> TakeMessageBoxes();

/// The library's message for a code, in words of our own for those that have none.
std::string MessageOf(int32_t code);

/// The message with its code: "Error opening SET file. (code 370)".
std::string Describe(int32_t code);

/// A refusal for the library's reason.
inline Refusal RefusalOf(std::string place, int32_t code) {
    return {std::move(place), MessageOf(code), code};
}

}  // namespace cwt
