// What keeps the command from its work, and how it says so.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace cwt {

enum ExitCode { kDone = 0, kRefused = 1, kBroken = 2 };

/// A shipment that the library or the engine will not rate, with a complaint a line.
class Refused : public std::runtime_error {
 public:
    explicit Refused(std::vector<std::string> complaints)
        : std::runtime_error(complaints.front()), complaints_(std::move(complaints)) {}
    explicit Refused(const std::string& complaint) : Refused(std::vector<std::string>{complaint}) {}

    const std::vector<std::string>& complaints() const { return complaints_; }

 private:
    std::vector<std::string> complaints_;
};

/// Anything that is wrong with the data, the engine or the command line.
struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Keeps the texts of the library's message boxes instead of showing them.
void CollectMessageBoxes();

/// The texts of the boxes since the last call.
std::vector<std::string> TakeMessageBoxes();

/// The library's message for a code, with the code: "Error opening SET file. (code 370)".
std::string Describe(int32_t code);

}  // namespace cwt
