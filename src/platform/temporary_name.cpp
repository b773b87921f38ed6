#include "platform/temporary_name.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>

#include "platform/file.h"

namespace hundredweight::platform {
namespace {

/// A digit stands in the place of each question mark. The tilde keeps a tariff set of the base name
/// HWTRATES, say, out of the pattern.
constexpr std::string_view kPattern = "HWT?????.~??";
constexpr std::string_view kDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::uint64_t kChances = std::uint64_t{1} << 14;  // And 22 bits of a process's number.

/// Differs from call to call, and most likely from process to process.
std::uint64_t Chance() {
    static std::atomic<std::uint32_t> calls = 0;
    const auto now =
        std::chrono::steady_clock::now().time_since_epoch() / std::chrono::microseconds(1);
    return (static_cast<std::uint64_t>(now) + calls++) % kChances;
}

}  // namespace

TemporaryName MakeTemporaryName() {
    std::uint64_t number = ProcessNumber() * kChances + Chance();
    TemporaryName name(kPattern);
    char* const characters = &name.front();
    for (std::size_t i = kPattern.size(); i-- > 0;) {
        if (kPattern[i] != '?') continue;
        characters[i] = kDigits[static_cast<std::size_t>(number % kDigits.size())];
        number /= kDigits.size();
    }
    return name;
}

bool IsTemporaryName(std::string_view name) {
    return std::equal(name.begin(), name.end(), kPattern.begin(), kPattern.end(),
                      [](char character, char wanted) {
                          return wanted == '?' ? kDigits.find(character) != kDigits.npos
                                               : character == wanted;
                      });
}

}  // namespace hundredweight::platform
