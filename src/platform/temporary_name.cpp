#include "platform/temporary_name.h"

#include <atomic>
#include <chrono>
#include <optional>

namespace hundredweight::platform {
namespace {

/// A digit stands in the place of each question mark. The tilde keeps a tariff set of the base name
/// HWTRATES, say, out of the pattern.
constexpr std::string_view kPattern = "HWT?????.~??";
constexpr std::string_view kDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr int64_t kLongestWriting = 3600;  // Seconds.

// What the seven digits hold, 36 bits.
constexpr uint64_t kProcesses = uint64_t{1} << 22;
constexpr uint64_t kMachines = uint64_t{1} << 10;
constexpr uint64_t kChances = uint64_t{1} << 4;
constexpr uint64_t kUnknownMachine = kMachines - 1;

/// A process of a number that the digits do not hold is none of this machine's.
uint64_t MachineOf(uint32_t process) {
    return process < kProcesses ? MachineNumber() % kUnknownMachine : kUnknownMachine;
}

/// Differs from call to call.
uint64_t Chance() {
    static std::atomic<uint32_t> calls = 0;
    const auto now =
        std::chrono::steady_clock::now().time_since_epoch() / std::chrono::microseconds(1);
    return (static_cast<uint64_t>(now) + calls++) % kChances;
}

/// The number in a temporary's name; nothing for another name.
std::optional<uint64_t> NumberIn(std::string_view name) {
    if (name.size() != kPattern.size()) return std::nullopt;
    uint64_t number = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (kPattern[i] != '?') {
            if (name[i] != kPattern[i]) return std::nullopt;
            continue;
        }
        const std::size_t digit = kDigits.find(name[i]);
        if (digit == kDigits.npos) return std::nullopt;
        number = number * kDigits.size() + digit;
    }
    return number;
}

}  // namespace

TemporaryName MakeTemporaryName(uint32_t process) {
    uint64_t number = (process % kProcesses * kMachines + MachineOf(process)) * kChances + Chance();
    TemporaryName name(kPattern);
    char* const characters = &name.front();
    for (std::size_t i = kPattern.size(); i-- > 0;) {
        if (kPattern[i] != '?') continue;
        characters[i] = kDigits[static_cast<std::size_t>(number % kDigits.size())];
        number /= kDigits.size();
    }
    return name;
}

bool IsAbandoned(std::string_view name, int64_t seconds_unchanged, bool alone) {
    const std::optional<uint64_t> number = NumberIn(name);
    if (!number) return false;
    const auto process = static_cast<uint32_t>(*number / kChances / kMachines);
    const bool ours = *number / kChances % kMachines == MachineOf(process);
    const bool is_over = !ProcessRuns(process) || (alone && process == ProcessNumber());
    return (ours && is_over) || seconds_unchanged > kLongestWriting;
}

}  // namespace hundredweight::platform
